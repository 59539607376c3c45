// The part of the decoder that follows the states of tasks.

#include "workbench/service/Decoder.h"

namespace kvx::service {

// A task that stops running without a dispatch that says so has left the processor idle.
void Decoder::OnState(Processor& on, const Record& record) {
    if (record.subject.id == 0) return;
    const bool placed = record.target != kAnyProcessor;
    Task& task = TaskOf(record.subject, placed ? record.target : on.number);
    Processor& where = ProcessorOf(task.processor);
    const bool ran = where.Occupant() == &task;
    const Condition condition = NewCondition(task, record);
    const bool wasReady = task.condition.activity == Activity::Ready;
    const auto target = placed && !wasReady ? record.target : task.processor;
    if (condition.activity == Activity::Ready && !ran)
        return BecomeReady(task, condition.suspended, target);
    if (!ran) tasks_.MoveTo(task, target);
    tasks_.Set(task, condition);
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

// A running task moves when it stops running: when the file says so, else at once. One that is
// ready already stands where it runs next.
void Decoder::OnMigrate(const Record& record) {
    if (record.subject.kind != ContextKind::Task || record.subject.id == 0) return;
    Task& task = TaskOf(record.subject, record.target);
    if (task.processor == record.target) return;
    Processor& from = ProcessorOf(task.processor);
    if (from.Occupant() == &task) {
        task.destination = record.target;
        if (from.handlers.empty() && !DispatchFollows(from, task))
            OnDispatchTo(from, {ContextKind::Task, 0});
        return;
    }
    if (task.condition.activity == Activity::Ready && window_.NextRunOf(task.id)) return;
    tasks_.MoveTo(task, record.target);
    tasks_.Show(task);
}

void Decoder::ApplyInferredReady() {
    for (; nextReady_ < inferred_.ready.size() && inferred_.ready[nextReady_].first <= next_;
         ++nextReady_) {
        Task& task = TaskOf({ContextKind::Task, inferred_.ready[nextReady_].second},
                            recording_.Processors().front());
        const bool suspended = task.condition.suspended;
        tasks_.Set(task, {Activity::Ready, suspended});
        Count(task.here.timeline, Loss::ReadyTimesInferred);
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
            case RecordKind::State:
                // The kernel's own words while it moves the task.
                if (task.destination != kAnyProcessor && next->subject.id == task.id) continue;
                return false;
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
        case TaskState::Unknown:
            return {Activity::Away};
        case TaskState::Waiting:
        case TaskState::WaitingSuspended:
            break;
    }
    if (const auto concluded = ConcludedWait(task)) return *concluded;
    Condition condition = task.condition;
    if (IsSuspended(record)) {
        if (condition.activity != Activity::Waiting) condition = {Activity::Ready};
        condition.suspended = true;
        return condition;
    }
    if (condition.activity != Activity::Waiting)
        condition = Wait(task, record.waitCode, record.cause);
    condition.suspended = record.state == TaskState::WaitingSuspended;
    return condition;
}

// The wait that begins with the record at hand, where its cause is concluded.
std::optional<Condition> Decoder::ConcludedWait(const Task& task) {
    const auto& causes = inferred_.causes;
    while (nextCause_ < causes.size() && causes[nextCause_].wait < next_) ++nextCause_;
    if (nextCause_ == causes.size() || causes[nextCause_].wait != next_) return std::nullopt;
    const WaitCause& cause = causes[nextCause_];
    const bool waits = task.condition.activity == Activity::Waiting;
    if (cause.suspends) {
        Condition suspended = waits ? task.condition : Condition{Activity::Ready};
        suspended.suspended = true;
        return suspended;
    }
    if (cause.isLater) Count(task.here.timeline, Loss::WaitCausesInferred);
    return Condition{Activity::Waiting, false, cause.waitCode ? cause.waitCode : kCodeSleeping,
                     cause.call};
}

// Whether whoever runs is in a call that suspends.
bool Decoder::IsSuspended(const Record& record) {
    const auto* call = ProcessorOf(record.processor).Calls().Innermost();
    return call && names_.Get(call->call).info.suspends;
}

// The task has lost the processor. False: it is ready, for nothing else is known.
bool Decoder::Loses(Task& task) {
    if (Holds(inferred_.waits, nextWait_)) {
        Count(task.here.timeline, Loss::WaitsInferred);
        const auto concluded = ConcludedWait(task);
        tasks_.Set(task, concluded ? *concluded : Wait(task, 0));
        return true;
    }
    if (!Holds(inferred_.unknown, nextUnknown_)) return false;
    Count(task.here.timeline, Loss::StatesUnknown);
    tasks_.Set(task, {Activity::Away});
    return true;
}

// The task waits in the call of the record `cause`, or else in its innermost open one. waitCode:
// what for, where the file gives it, else 0.
Condition Decoder::Wait(Task& task, std::uint8_t waitCode, std::uint32_t cause) {
    Condition condition{Activity::Waiting, false, kCodeSleeping, cause};
    const auto* call = task.calls.Innermost();
    if (cause == kNoRecord && call) {
        const CallInfo& info = names_.Get(call->call).info;
        // What is held may have been had long ago: where the file gives the cause, it holds.
        if (info.waitCode && !(info.overlaps && waitCode)) waitCode = info.waitCode;
        condition.waitRecord = call->record;
    } else if (cause == kNoRecord && waitCode) {
        condition.waitRecord = next_;
    }
    if (waitCode)
        condition.waitCode = waitCode;
    else if (task.here.timeline && task.here.timeline->started)
        Count(task.here.timeline, Loss::WaitCauseUnknown);
    return condition;
}

}  // namespace kvx::service
