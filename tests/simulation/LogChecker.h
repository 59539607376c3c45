#pragma once
// Follows a generated log and tells where it breaks the rules of a uITRON kernel. It knows the
// priorities from the resource file and the protocols of the mutexes, and models the rest itself.

#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "simulation/LogReader.h"

namespace kvx::simulation {

struct CheckedMutex {
    bool inherits = false;
    std::int64_t ceiling = 0;  // 0: none
};

class LogChecker {
  public:
    // resource: the text of the resource file. The mutexes have the ids 1, 2, ...
    LogChecker(const std::string& resource, std::vector<CheckedMutex> mutexes);

    void Check(const std::vector<LogLine>& lines);

    // The first faults, each with the line where it shows.
    const std::vector<std::string>& Faults() const { return faults_; }
    // What tasks waited in, and how the waits ended: "wai_sem", "twai_flg -50", ...
    const std::set<std::string>& Waits() const { return waits_; }
    const std::set<std::string>& Calls() const { return calls_; }
    const std::set<std::string>& States() const { return states_; }
    const std::set<std::string>& Handlers() const { return handlerKinds_; }
    int Preemptions() const { return preemptions_; }
    int DeepestNesting() const { return deepest_; }
    // Dispatches to a task that ran by the priority of another one.
    int Boosts() const { return boosts_; }
    bool WasIdle() const { return wasIdle_; }

  private:
    using Call = std::optional<LogLine>;
    struct Task {
        std::int64_t priority = 0;
        std::string state;
        Call call;                    // open
        std::string released;         // how its wait ended: "call", "time", "force"
        std::set<std::int64_t> held;  // mutexes
        std::int64_t waitsForMutex = 0;
    };
    struct Running {
        std::string kind;
        std::int64_t id = 0;
        Call call;
    };

    void Fault(const std::string& why);
    void OnDispatchTo();
    void OnDispatchFrom();
    void OnState();
    void OnWaiting(Task& task);
    void OnActivated(Task& task);
    void OnReleased(Task& task);
    void OnDormant(Task& task);
    void OnHandlerEnter();
    void OnHandlerLeave();
    void OnCallEnter();
    void OnCallLeave();
    void CheckCall(const std::string& name);
    void CheckReturn(const Task& task, const LogLine& call);
    // The one who acts is the one who should.
    void CheckActor();

    Call& OpenCall();
    bool IsReady(const Task& task) const { return task.state == "RUNNABLE"; }
    std::int64_t OwnerOf(std::int64_t mutex) const;
    std::int64_t Effective(const Task& task) const;
    std::int64_t HighestReady() const;
    bool Releases(const LogLine& by, const LogLine& wait, std::int64_t task) const;

    std::map<std::int64_t, Task> tasks_;
    std::set<std::pair<std::string, std::int64_t>> declared_;
    const std::vector<CheckedMutex> mutexes_;
    std::vector<Running> handlers_;
    std::int64_t running_ = 0;
    bool rotated_ = false;  // since the last dispatch
    const LogLine* line_ = nullptr;
    std::vector<std::string> faults_;
    std::set<std::string> waits_, calls_, states_, handlerKinds_;
    int preemptions_ = 0;
    int deepest_ = 0;
    int boosts_ = 0;
    bool wasIdle_ = false;
};

}  // namespace kvx::simulation
