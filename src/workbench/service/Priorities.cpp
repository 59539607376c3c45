#include "workbench/service/Priorities.h"

namespace kvx::service {

void Priorities::Declare(std::uint64_t task, std::int32_t priority) {
    if (priority == kNoPriority || !known_.try_emplace(task, Known{priority, priority}).second)
        return;
    changes_.Append({0, task, priority, kNoRecord});
}

void Priorities::Set(std::uint64_t task, std::int32_t priority, const Moment& moment) {
    Known& known = known_[task];
    if (priority == kInitialPriority) priority = known.first;
    if (priority == kNoPriority || priority == known.now) return;
    if (known.first == kNoPriority) known.first = priority;
    known.now = priority;
    changes_.Append({moment.Now(), task, priority, moment.Record()});
}

}  // namespace kvx::service
