// The part of the decoder that follows the states of tasks.

#include "workbench/service/Decoder.h"

namespace kvx::service {

// A task that stops running without a dispatch that says so has left the processor idle.
void Decoder::OnState(Processor& on, const Record& record) {
    if (record.subject.id == 0) return;
    Task& task = TaskOf(record.subject, record.target == kAnyProcessor ? on.number : record.target);
    Processor& where = ProcessorOf(task.processor);
    const bool ran = where.Occupant() == &task;
    if (record.target != kAnyProcessor && !ran) tasks_.MoveTo(task, record.target);
    tasks_.Set(task, NewCondition(task, record));
    if (!ran || where.Occupant() || !where.handlers.empty()) return;
    if (!DispatchFollows(where, task)) OnDispatchTo(where, {ContextKind::Task, 0});
}

void Decoder::OnSuspend(Task& task) {
    const auto* call = task.calls.Innermost();
    const bool delays = call && names_.Get(call->call).info.waitCode == kCodeDelay;
    if (task.condition.activity == Activity::Running && delays)
        return tasks_.Set(task, Wait(task, 0));
    Condition condition = task.condition;
    if (condition.activity != Activity::Waiting) condition.activity = Activity::Ready;
    condition.suspended = true;
    tasks_.Set(task, condition);
}

void Decoder::OnResume(Task& task) {
    Condition condition = task.condition;
    condition.suspended = false;
    tasks_.Set(task, condition);
}

// A running task that moves away leaves the processor idle, unless the file says what follows.
void Decoder::OnMigrate(const Record& record) {
    if (record.subject.kind != ContextKind::Task || record.subject.id == 0) return;
    Task& task = TaskOf(record.subject, record.target);
    if (task.processor == record.target) return;
    Processor& from = ProcessorOf(task.processor);
    tasks_.MoveTo(task, record.target);
    if (tasks_.IsShown(task)) tasks_.Show(task);
    const bool ran = from.Occupant() == &task && from.handlers.empty();
    if (ran && !DispatchFollows(from, task)) OnDispatchTo(from, {ContextKind::Task, 0});
}

void Decoder::ApplyInferredReady() {
    for (; nextReady_ < inferred_.ready.size() && inferred_.ready[nextReady_].first <= next_;
         ++nextReady_) {
        Task& task = TaskOf({ContextKind::Task, inferred_.ready[nextReady_].second}, shown_);
        const bool suspended = task.condition.suspended;
        tasks_.Set(task, {Activity::Ready, suspended});
        if (tasks_.IsShown(task)) losses_.Add(Loss::ReadyTimesInferred);
    }
}

// Whether the next record of the processor takes it from the task. At the end of the recording
// nothing says that it was taken.
bool Decoder::DispatchFollows(const Processor& on, const Task& task) const {
    for (std::uint32_t distance = 1; distance <= RecordWindow::kAhead; ++distance) {
        const Record* next = window_.Ahead(distance);
        if (!next) return true;
        if (next->processor != on.number || next->kind == RecordKind::Comment ||
            next->kind == RecordKind::Unreadable)
            continue;
        switch (next->kind) {
            case RecordKind::DispatchFrom:
            case RecordKind::SwitchedOut:
            case RecordKind::Switch:
                return true;
            case RecordKind::DispatchTo:
            case RecordKind::Runs:
                return next->subject.id != task.id;
            default:
                return false;
        }
    }
    return false;
}

Condition Decoder::NewCondition(Task& task, const Record& record) {
    switch (record.state) {
        case TaskState::Runnable:
            return {Activity::Ready};
        case TaskState::Suspended:
            return {Activity::Ready, true};
        case TaskState::Dormant:
        case TaskState::NonExistent:
            return {Activity::Dormant};
        case TaskState::Waiting:
        case TaskState::WaitingSuspended:
            break;
    }
    Condition condition = task.condition;
    if (condition.activity != Activity::Waiting) condition = Wait(task, record.waitCode);
    condition.suspended = record.state == TaskState::WaitingSuspended;
    return condition;
}

// The task waits in its innermost open call. waitCode: the cause where the file gives it, else 0.
Condition Decoder::Wait(Task& task, std::uint8_t waitCode) {
    Condition condition{Activity::Waiting, false, kCodeSleeping, kNoRecord};
    if (const auto* call = task.calls.Innermost()) {
        const auto known = names_.Get(call->call).info.waitCode;
        if (known) waitCode = known;
        condition.waitRecord = call->record;
    } else if (waitCode) {
        condition.waitRecord = next_;
    }
    if (waitCode)
        condition.waitCode = waitCode;
    else if (tasks_.IsShown(task) && started_)
        losses_.Add(Loss::WaitCauseUnknown);
    return condition;
}

}  // namespace kvx::service
