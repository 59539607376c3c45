#pragma once
// The jobs of all tasks and handlers.

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "workbench/timing/Census.h"

namespace kvx::timing {

inline constexpr std::uint8_t kEndsDormant = 2;    // state code
inline constexpr std::uint8_t kEndUnknown = 0xFF;  // it has not ended in the recording

// Times are counts. What depends on something that the recording does not tell is none.
struct Job {
    std::uint32_t number = 0;  // from 1, by activation
    std::optional<std::int64_t> activation;
    std::optional<std::int64_t> start;  // none too where it never ran
    std::optional<std::int64_t> end;
    std::optional<std::int64_t> cet;    // core execution time
    std::optional<std::int64_t> ready;  // runnable, and not executing
    std::optional<std::int64_t> suspended;
    std::optional<std::int64_t> preemptions;
    std::optional<std::int64_t> period;  // to the next activation
    std::uint8_t endsIn = kEndUnknown;   // state code of a wait, kCauseUnknown, kEndsDormant
    bool cut = false;
    Releaser startedBy;
    std::uint32_t startedByJob = 0;  // number of its job; 0: none
    EventRef event;                  // that began it
    std::uint32_t timeline = 0;      // where it first ran, or became ready if it never did
    std::size_t depth = 0;           // handlers: how many others it interrupted

    std::optional<std::int64_t> Response() const { return Between(activation, end); }
    std::optional<std::int64_t> Pending() const { return Between(activation, start); }
    std::optional<std::int64_t> Gross() const { return Between(start, end); }
    std::optional<std::int64_t> Blocked() const {
        const auto rt = Response();
        if (!rt || !cet || !ready) return std::nullopt;
        return *rt - *cet - *ready;
    }
    // Of a range it is what the range shows of it.
    Job CutTo(const Span& range) const;
    // From when to when it is known to have been there, whether that is its beginning and end or
    // not.
    Span seen;

  private:
    static std::optional<std::int64_t> Between(const std::optional<std::int64_t>& from,
                                               const std::optional<std::int64_t>& to) {
        if (!from || !to) return std::nullopt;
        return *to - *from;
    }
};

// Which waits end the jobs of a task.
struct JobEnds {
    std::vector<std::uint8_t> causes;
    std::vector<std::string> calls;
};

// By context; none: what holds without being told.
using JobEndRules = std::vector<std::optional<JobEnds>>;

class Jobs {
  public:
    // contexts: how many there are.
    explicit Jobs(std::uint32_t contexts) : tasks_(contexts), handlers_(contexts) {}

    std::size_t CountOf(ContextId context) const {
        return tasks_[context].size() + handlers_[context].size();
    }
    // The job with number `index` + 1.
    Job At(ContextId context, std::size_t index) const;
    // How long the job of a task was ready as far as the recording shows it, cut or not.
    std::int64_t ReadyOf(ContextId task, std::size_t index) const {
        return tasks_[task][index].ready;
    }
    std::size_t Bytes() const;

    // As jobs are kept.
    struct TaskJob {
        std::int64_t activation = 0, start = 0, end = 0;
        std::int64_t cet = 0, ready = 0, suspended = 0;
        std::uint32_t event = 0;
        std::uint32_t preemptions = 0;
        Releaser by;
        std::uint32_t byJob = 0;
        std::uint16_t eventTimeline = 0, timeline = 0;
        std::uint8_t endsIn = kEndUnknown;
        bool hasActivation = false, hasStart = false, hasEnd = false;
        bool gapBefore = false;   // something between the job before and this one may be missing
        bool hasUnknown = false;  // a stretch of it is not told
    };
    struct HandlerJob {
        std::int64_t start = 0, end = 0;
        std::int64_t interrupted = 0;
        std::uint32_t event = 0;
        std::uint16_t timeline = 0;
        std::uint8_t depth = 0;
        bool seenStart : 1 = true;
        bool seenEnd : 1 = true;
        bool gapBefore : 1 = false;
    };
    std::deque<TaskJob>& TaskJobs(ContextId context) { return tasks_[context]; }
    std::deque<HandlerJob>& HandlerJobs(ContextId context) { return handlers_[context]; }

  private:
    Job AtTask(const std::deque<TaskJob>& jobs, std::size_t index) const;
    Job AtHandler(const std::deque<HandlerJob>& jobs, std::size_t index) const;

    // Pieces that are never moved; by context.
    std::vector<std::deque<TaskJob>> tasks_;
    std::vector<std::deque<HandlerJob>> handlers_;
};

}  // namespace kvx::timing
