#pragma once
// How locks were used.

#include <optional>
#include <vector>

#include "workbench/timing/Selection.h"

namespace kvx::timing {

struct LockRow {
    ObjectId object = kNoObject;
    std::uint64_t takes = 0;
    std::uint64_t contended = 0;  // of them, those that waited
    std::uint64_t holds = 0;      // measured from take to give
    std::int64_t holdMin = 0, holdTotal = 0, holdMax = 0;
    ContextId longestHolder = kNobody;
    EventRef longestEvent;
    std::optional<std::int64_t> waitMax;  // of all waits for it, whether they got it or not
    std::int64_t waitMaxAt = 0;
    EventRef waitMaxEvent;
};

class LockTable final : public IWalkObserver {
  public:
    // Both are borrowed.
    LockTable(const Walk& walk, const Selection& selection);

    void OnTask(const Moment& moment, ContextId task, const TaskStatus& before,
                const TaskStatus& now, const Releaser& by) override;
    void OnTake(const Moment& moment, ObjectId object, ContextId by, ContextId before) override;
    void OnGive(const Moment& moment, ObjectId object, ContextId by, ContextId before) override;
    void OnGap(const Moment&) override {
        for (Begin& begin : held_) begin.seen = false;
    }
    // In order of objects; those that are not used in the range are left out.
    std::vector<LockRow> Rows() const;

  private:
    struct Begin {
        std::int64_t time = 0;
        EventRef event;
        std::uint32_t timeline = 0;
        bool seen = false;
    };
    const Walk& walk_;
    const Selection selection_;
    std::vector<LockRow> rows_;  // by object
    std::vector<Begin> held_;    // by object
    std::vector<Begin> waits_;   // by context
};

}  // namespace kvx::timing
