#pragma once
// The base priorities of tasks as far as the recording tells them: those at the start, and every
// change. One thread sets them, others may read what they see counted.

#include <cstdint>
#include <unordered_map>

#include "workbench/service/EventWriter.h"
#include "workbench/service/Record.h"
#include "workbench/service/StableVector.h"

namespace kvx::service {

struct PriorityChange {
    std::int64_t time = 0;
    std::uint64_t task = 0;  // as in ContextKey
    std::int32_t priority = 0;
    std::uint32_t record = kNoRecord;  // kNoRecord: declared for the start
};

class Priorities {
  public:
    // For the start; kNoPriority says nothing.
    void Declare(std::uint64_t task, std::int32_t priority);
    // From the moment on. What changes nothing leaves no trace; kInitialPriority is that which was
    // told first, and nothing where none was.
    void Set(std::uint64_t task, std::int32_t priority, const Moment& moment);

    // In order of time; the declared ones first, with time 0 and no record. A task without one has
    // no known priority.
    const StableVector<PriorityChange>& Changes() const { return changes_; }

  private:
    struct Known {
        std::int32_t first = kNoPriority;
        std::int32_t now = kNoPriority;
    };
    StableVector<PriorityChange> changes_;
    std::unordered_map<std::uint64_t, Known> known_;
};

}  // namespace kvx::service
