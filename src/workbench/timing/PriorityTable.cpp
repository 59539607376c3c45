#include "workbench/timing/PriorityTable.h"

namespace kvx::timing {

PriorityTable::PriorityTable(const Source& source)
    : source_(source),
      largerIsMoreUrgent_(source.decoded.GetRecording().GetKernel().LargerIsMoreUrgent()),
      now_(source.contexts.Count()) {
    MoveTo(0);
}

// Those of the start have no record.
void PriorityTable::MoveTo(std::uint32_t record) {
    const auto& changes = source_.decoded.BasePriorities().Changes();
    for (; next_ < changes.size(); ++next_) {
        const auto& change = changes[next_];
        if (change.record != service::kNoRecord && change.record > record) return;
        const auto task = source_.contexts.TaskOf(change.task);
        if (task != kNobody) now_[task] = change.priority;
    }
}

bool PriorityTable::IsLessUrgent(ContextId one, ContextId other) const {
    if (!now_[one] || !now_[other]) return false;
    return largerIsMoreUrgent_ ? *now_[one] < *now_[other] : *now_[one] > *now_[other];
}

}  // namespace kvx::timing
