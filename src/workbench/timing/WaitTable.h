#pragma once
// What tasks waited for, how long, and who ended it.

#include <map>
#include <tuple>
#include <vector>

#include "workbench/timing/Selection.h"

namespace kvx::timing {

struct ReleaseCount {
    ContextId context = kNobody;  // nobody: the recording does not tell
    std::uint32_t call = service::kNoRecord;
    std::uint64_t count = 0;
};

struct WaitRow {
    ContextId task = kNobody;
    std::uint8_t cause = kCauseUnknown;
    ObjectId object = kNoObject;
    std::uint64_t count = 0;
    std::int64_t total = 0;
    std::int64_t max = 0;
    std::int64_t maxAt = 0;  // when the longest began, with which event
    EventRef maxEvent;
    std::vector<ReleaseCount> releasedBy;  // most first
    double Avg() const { return static_cast<double>(total) / static_cast<double>(count); }
};

// Counts waits of which beginning and end are told and lie in the range.
class WaitTable final : public IWalkObserver {
  public:
    // borrowed
    WaitTable(const Selection& selection, std::uint32_t contexts)
        : selection_(selection), open_(contexts) {}

    void OnTask(const Moment& moment, ContextId task, const TaskStatus& before,
                const TaskStatus& now, const Releaser& by) override;
    // By task, cause and object.
    std::vector<WaitRow> Rows() const;

  private:
    struct Open {
        std::int64_t since = 0;
        EventRef event;
        std::uint32_t timeline = 0;
        bool seen = false;
    };
    const Selection selection_;
    std::vector<Open> open_;  // by context
    std::map<std::tuple<ContextId, std::uint8_t, ObjectId>, WaitRow> rows_;
};

}  // namespace kvx::timing
