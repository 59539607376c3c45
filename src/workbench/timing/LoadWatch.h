#pragma once
// Looks for processors without idle time, for handlers that take much of one, and for stretches of
// which nothing is told.

#include <deque>
#include <map>

#include "workbench/timing/Incident.h"

namespace kvx::timing {

// All in counts. 0: not looked for.
struct LoadLimits {
    std::int64_t withoutIdle = 0;    // so long without idle time is much
    std::int64_t handlerWindow = 0;  // in any stretch of this length ...
    std::int64_t handlerTime = 0;    // ... more than that of one handler is much
};

class LoadWatch final : public IWalkObserver {
  public:
    // All are borrowed.
    LoadWatch(const Walk& walk, const LoadLimits& limits, Incidents& out);

    void OnDispatch(const Moment& moment, ContextId from, ContextId to) override;
    void OnGap(const Moment& moment) override;
    void OnGapEnd(const Moment& moment) override;
    void OnEnd(std::int64_t time) override;

  private:
    // Of one processor.
    struct Busy {
        bool begun = false;
        bool is = false;
        std::int64_t since = 0;
        EventRef event;
        std::int64_t idleSince = 0;
    };
    struct Run {
        std::int64_t start = 0;
        std::int64_t end = 0;
        EventRef event;
    };
    // Of one handler on one processor.
    struct Handler {
        std::deque<Run> runs;  // that may lie in the window
        std::int64_t sum = 0;  // of their times
        std::optional<Incident> open;
    };
    void EndBusy(std::uint32_t timeline, std::int64_t time, bool goesOn);
    void AddRun(std::uint32_t timeline, ContextId handler, const Run& run);

    const Walk& walk_;
    const LoadLimits limits_;
    Incidents& out_;
    const std::int64_t begin_;
    std::vector<Busy> busy_;                     // by timeline
    std::vector<std::optional<Incident>> gaps_;  // by timeline: that last
    std::vector<Run> runs_;                      // by timeline: what has it now
    std::map<std::pair<std::uint32_t, ContextId>, Handler> handlers_;
};

}  // namespace kvx::timing
