#include "workbench/simulation/KernelMoment.h"

namespace kvx::simulation {

void KernelMoment::Apply(const TraceRecord& record) {
    switch (record.kind) {
        case TraceKind::DispatchTo:
            running_ = record.id;
            return;
        case TraceKind::DispatchFrom:
            running_ = 0;
            return;
        case TraceKind::HandlerEnter:
            ++handlers_;
            return;
        case TraceKind::HandlerLeave:
            --handlers_;
            return;
        case TraceKind::TaskState: {
            const auto id = static_cast<std::size_t>(record.id);
            if (id >= tasks_.size()) tasks_.resize(id + 1);
            tasks_[id] = {true, record.state};
            return;
        }
        default:
            return;
    }
}

LoggedState KernelMoment::StateOf(const Task& task) const {
    const auto id = static_cast<std::size_t>(task.id);
    if (id < tasks_.size() && tasks_[id].changed) return tasks_[id].state;
    return task.config.active ? LoggedState::Runnable : LoggedState::Dormant;
}

}  // namespace kvx::simulation
