#pragma once
// Jobs, waits, locks and what a job does at each count, once more and from nothing but the lines
// that `kvxostrace events` writes. Slow and plain; knows only what the random kernel does.

#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace kvx::test {

class BruteForce {
  public:
    // events: the whole text. end: the last time of the recording.
    BruteForce(const std::string& events, long long end);

    struct Job {
        std::optional<long long> activation, start, end;
        long long from = 0, to = 0;  // as far as it is seen
        int preemptions = 0;
        bool unknown = false;  // a stretch of it is not told
        std::string endsIn, starter, starterCall;
        bool IsCut() const { return !activation || !end || unknown; }
    };
    // What holds from one time to a later one.
    struct Now {
        std::string doing = "unknown";  // runs interrupted ready waits dormant
        bool suspended = false, unseen = true;
        std::string cause, object, cpu, call;
        std::size_t wait = 0;  // row that the wait began with
    };
    struct Slot {
        long long from = 0, to = 0;
        std::map<std::string, Now> tasks;
        std::map<std::string, std::string> current;  // by processor
        std::map<std::string, std::string> holders;  // by lock
    };

    const std::map<std::string, std::vector<Job>>& Jobs() const { return jobs_; }
    const std::vector<Slot>& Slots() const { return slots_; }
    // The rows of the table jobs that are tasks', by task and number.
    nlohmann::json JobRows() const;
    nlohmann::json WaitRows() const;
    nlohmann::json LockRows() const;
    bool IsLock(const std::string& object) const { return locks_.contains(object); }

  private:
    struct Row {
        long long time = 0;
        std::string kind, context, detail, cpu;
        bool waits = false;  // a call in which the task waits
    };
    struct Use {
        bool any = false, taken = false, wrong = false, again = false;
        std::string giver;
    };
    struct WaitSum {
        long long count = 0, total = 0, max = 0, maxAt = 0;
        std::map<std::pair<std::string, std::string>, int> by;
    };
    struct LockSum {
        long long takes = 0, contended = 0, holds = 0, total = 0, min = 0, max = 0;
        std::string longest;
        std::optional<long long> waitMax;
        long long waitMaxAt = 0, heldSince = 0;
        bool known = false;
    };

    void Read(const std::string& events);
    void Pass();
    void Start();
    void Dispatch(const Row& row);
    void State(std::size_t at);
    void Call(const Row& row);
    void Set(const std::string& task, Now now, std::size_t at);
    std::pair<std::string, std::string> WokenBy(std::size_t at, const std::string& object) const;
    void EndWait(const std::string& task, const Now& before, const Now& now, std::size_t at);
    void Take(const std::string& object, const std::string& by);
    void Give(const std::string& object, const std::string& by);
    bool IsBetween(const std::string& task, const Now& now) const;
    void CountPreemptions(const std::string& cpu);
    bool IsPreempted(const std::string& task, std::size_t ran, std::size_t left,
                     std::size_t taken) const;
    nlohmann::json RowOf(const std::string& task, const Job& job, std::size_t number) const;

    const long long end_;
    std::vector<Row> rows_;
    std::set<std::string> ending_;  // tasks with a wait that ends jobs, or dormant
    std::set<std::string> locks_;
    std::map<std::string, std::string> heldAtStart_;
    bool counts_ = false;  // the second pass, with locks known

    long long time_ = 0;
    std::map<std::string, Now> now_;
    std::map<std::string, long long> since_;
    std::map<std::string, std::string> current_, below_;
    std::map<std::string, std::vector<std::string>> handlers_;
    std::map<std::string, std::string> holder_;
    std::map<std::string, Use> uses_;
    std::map<std::string, std::vector<Job>> jobs_;
    std::map<std::string, bool> open_;
    std::map<std::tuple<std::string, std::string, std::string>, WaitSum> waits_;
    std::map<std::string, LockSum> lockSums_;
    std::vector<Slot> slots_;
};

}  // namespace kvx::test
