#include "workbench/simulation/Scheduler.h"

#include "workbench/simulation/KernelMutex.h"

namespace kvx::simulation {

void Scheduler::Introduce(Task& task) {
    task.basePriority = task.priority = task.config.priority;
    task.timer.task = &task;
    if (!task.config.active) return;
    task.program = task.config.body();
    task.state = LoggedState::Runnable;
    ready_.Append(task);
}

void Scheduler::Dispatch() {
    Task* const next = ready_.Front();
    if (next == running_) return;
    if (running_) recorder_.Dispatch(TraceKind::DispatchFrom, running_->id);
    running_ = next;
    if (running_) recorder_.Dispatch(TraceKind::DispatchTo, running_->id);
}

void Scheduler::Activate(Task& task) {
    task.program = task.config.body();
    task.remaining = 0;
    task.wakeups = 0;
    task.basePriority = task.priority = task.config.priority;
    SetState(task, LoggedState::Runnable);
}

void Scheduler::Exit(Task& task) {
    if (task.IsWaiting()) {
        KernelObject* const object = task.wait.queue ? &task.wait.queue->Object() : nullptr;
        StopWaiting(task);
        if (object) object->WaiterLeft(*this);
    }
    while (!task.held.empty()) task.held.back()->GiveUp(*this);
    SetState(task, LoggedState::Dormant);
    task.program = {};
    if (&task == running_) {
        recorder_.Dispatch(TraceKind::DispatchFrom, task.id);
        running_ = nullptr;
    }
    if (task.activations == 0) return;
    --task.activations;
    Activate(task);
}

CallResult Scheduler::Block(WaitQueue* queue, std::int32_t timeout, Wait wait) {
    if (timeout == TMO_POL) return {E_TMOUT};
    Task& task = *running_;
    task.wait = wait;
    task.wait.queue = queue;
    SetState(task, LoggedState::Waiting);
    if (queue) queue->Insert(task);
    if (timeout > 0) timers_.StartAfter(task.timer, timeout);
    return {};
}

void Scheduler::Release(Task& task, CallResult result) {
    StopWaiting(task);
    task.result = result;
    SetState(task, task.state == LoggedState::WaitingSuspended ? LoggedState::Suspended
                                                               : LoggedState::Runnable);
}

void Scheduler::Abandon(Task& task, std::int32_t ercd) {
    KernelObject* const object = task.wait.queue ? &task.wait.queue->Object() : nullptr;
    Release(task, {ercd});
    if (object) object->WaiterLeft(*this);
}

CallResult Scheduler::Suspend(Task& task) {
    switch (task.state) {
        case LoggedState::Dormant:
            return {E_OBJ};
        case LoggedState::Suspended:
        case LoggedState::WaitingSuspended:
            return {E_QOVR};
        case LoggedState::Runnable:
            SetState(task, LoggedState::Suspended);
            return {};
        case LoggedState::Waiting:
            SetState(task, LoggedState::WaitingSuspended);
            return {};
    }
    return {};
}

CallResult Scheduler::Resume(Task& task) {
    if (task.state == LoggedState::Suspended)
        SetState(task, LoggedState::Runnable);
    else if (task.state == LoggedState::WaitingSuspended)
        SetState(task, LoggedState::Waiting);
    else
        return {E_OBJ};
    return {};
}

void Scheduler::SetPriority(Task& task, std::int32_t priority, Place place) {
    const bool isReady = task.state == LoggedState::Runnable;
    WaitQueue* const queue = task.IsWaiting() ? task.wait.queue : nullptr;
    if (isReady) ready_.Remove(task);
    if (queue) queue->Remove(task);
    task.priority = priority;
    if (queue) queue->Insert(task);
    if (!isReady) return;
    place == Place::First ? ready_.Prepend(task) : ready_.Append(task);
}

void Scheduler::SetState(Task& task, LoggedState state) {
    if (task.state == LoggedState::Runnable) ready_.Remove(task);
    task.state = state;
    if (state == LoggedState::Runnable) ready_.Append(task);
    recorder_.State(task.id, state);
}

void Scheduler::StopWaiting(Task& task) {
    if (task.wait.queue) task.wait.queue->Remove(task);
    timers_.Stop(task.timer);
    task.wait = {};
}

}  // namespace kvx::simulation
