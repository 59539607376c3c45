#pragma once
// Who holds which lock.

#include <cstdint>
#include <functional>
#include <queue>
#include <vector>

#include "workbench/timing/LockSet.h"

namespace kvx::timing {

class LockTracker {
  public:
    // locks: see Walk.
    LockTracker(const Objects& objects, const LockSet* locks);

    bool Tracks(ObjectId object) const { return states_[object].tracked; }
    ContextId HolderOf(ObjectId object) const { return states_[object].holder; }
    bool IsMutex(ObjectId object) const { return states_[object].mutex; }
    bool IsFree(ObjectId object) const { return states_[object].holder == kNobody; }

    // Both answer who held it until now.
    ContextId Take(ObjectId object, ContextId by);
    ContextId Give(ObjectId object, ContextId by);
    // Whoever holds it and however often.
    void Free(ObjectId object);
    void FreeAll();
    // It was taken in a call that returns with this record, while another one held it.
    void TakeLater(ObjectId object, ContextId by, std::uint32_t returned) {
        later_.push({returned, object, by});
    }
    struct Later {
        std::uint32_t returned = 0;
        ObjectId object = kNoObject;
        ContextId by = kNobody;
        bool operator>(const Later& other) const { return returned > other.returned; }
    };
    bool HasReturned(std::uint32_t record) const {
        return !later_.empty() && later_.top().returned <= record;
    }
    Later NextReturned() {
        const Later next = later_.top();
        later_.pop();
        return next;
    }
    // The mutexes that the task holds.
    std::vector<ObjectId> MutexesOf(ContextId task) const;

  private:
    struct State {
        bool tracked = false;
        bool mutex = false;
        ContextId holder = kNobody;
        std::uint32_t depth = 0;  // a mutex may be taken again by who holds it
    };
    std::vector<State> states_;
    std::vector<ObjectId> heldMutexes_;
    std::priority_queue<Later, std::vector<Later>, std::greater<>> later_;
};

}  // namespace kvx::timing
