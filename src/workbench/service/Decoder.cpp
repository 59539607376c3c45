#include "workbench/service/Decoder.h"

#include <algorithm>

namespace kvx::service {

Decoder::Decoder(Recording& recording, const Inferred& inferred,
                 std::span<Timeline* const> timelines, CallNames& names, Priorities& priorities,
                 Moment& moment)
    : recording_(recording),
      inferred_(inferred),
      timelines_(timelines),
      names_(names),
      priorities_(priorities),
      moment_(moment),
      tasks_([this](std::uint32_t processor) { return TimelineOf(processor); }, moment),
      window_(recording) {
    const auto& processors = recording.Processors();
    for (const auto& declared : recording.Contexts()) {
        if (declared.key.kind != ContextKind::Task) continue;
        declaredTasks_.insert(declared.key.id);
        priorities_.Declare(declared.key.id, declared.priority);
        const bool anywhere = declared.processor == kAnyProcessor;
        if (declared.state == TaskState::NonExistent || (anywhere && processors.size() > 1))
            continue;
        tasks_.Get(declared.key.id, anywhere ? processors.front() : declared.processor);
    }
}

void Decoder::DecodeOne() {
    const Record& record = window_.At(next_);
    if (record.kind == RecordKind::Unreadable) {
        moment_.MoveTo(next_);
        losses_.Add(Loss::UnreadableRecords);
    } else {
        moment_.MoveTo(next_, record.time);
        if (record.kind != RecordKind::Comment) {
            Processor& on = ProcessorOf(record.processor);
            if (on.timeline && !on.timeline->started) Start(on, record);
            if (record.priority != kNoPriority) OnPriority(on, record);
            Apply(on, record);
        }
    }
    ApplyInferredReady();
    ++next_;
}

// Shows the states that the file gives for the start. The task that the first record dispatches has
// been ready for a time that is not known, so that nothing is shown of it.
void Decoder::Start(Processor& on, const Record& first) {
    for (const auto& declared : recording_.Contexts()) {
        if (declared.key.kind != ContextKind::Task || declared.key.id == 0 || !declared.hasState ||
            !tasks_.Knows(declared.key.id))
            continue;
        Task& task = tasks_.Get(declared.key.id, declared.processor);
        const bool starts = first.kind == RecordKind::DispatchTo && first.subject == declared.key;
        const bool known = task.condition.activity != Activity::Unknown;
        if (task.processor != on.number || starts || known) continue;
        Record state;
        state.state = declared.state;
        state.waitCode = declared.waitCode;
        tasks_.Set(task, NewCondition(task, state));
    }
    on.timeline->started = true;
    LearnAhead(on);
}

// What runs at the start shows in the first record that takes the processor from somebody.
void Decoder::LearnAhead(Processor& on) {
    for (std::uint32_t distance = 0; const Record* next = window_.Ahead(distance); ++distance) {
        if (on.known || next->processor != on.number) continue;
        if (next->kind == RecordKind::DispatchTo || next->kind == RecordKind::Runs) return;
        if (next->kind == RecordKind::Switch) return Learn(on, next->from);
        if (next->kind == RecordKind::DispatchFrom || next->kind == RecordKind::SwitchedOut) {
            if (next->subject.kind != ContextKind::Unknown) Learn(on, next->subject);
            return;
        }
    }
}

void Decoder::Apply(Processor& on, const Record& record) {
    switch (record.kind) {
        case RecordKind::Comment:
        case RecordKind::Unreadable:
            return;
        case RecordKind::DispatchTo:
            return OnDispatchTo(on, record.subject);
        case RecordKind::Runs:
            if (!RunsAlready(on, record.subject)) OnDispatchTo(on, record.subject);
            return;
        case RecordKind::Switch:
            return OnSwitch(on, record);
        case RecordKind::DispatchFrom:
            return OnDispatchFrom(on, record.subject);
        case RecordKind::SwitchedOut:
            return OnSwitchedOut(on, record.subject);
        case RecordKind::State:
            return OnState(on, record);
        case RecordKind::Blocks:
            if (auto* call = on.Calls().Innermost()) call->blocked = true;
            return;
        case RecordKind::Suspend:
            return OnSuspend(TaskOf(record.subject, on.number));
        case RecordKind::Resume:
            return OnResume(TaskOf(record.subject, on.number));
        case RecordKind::Enter:
            return OnEnter(on, record.subject);
        case RecordKind::Leave:
            return OnLeave(on, record.subject, record.from);
        case RecordKind::Call:
        case RecordKind::InstantCall:
            return OnCall(on, record);
        case RecordKind::Return:
            return OnReturn(on, record);
        case RecordKind::Migrate:
            return OnMigrate(record);
        case RecordKind::Begin:
            return;
        case RecordKind::Gap:
            return OnGap(on);
    }
}

void Decoder::OnDispatchTo(Processor& on, const ContextKey& to) {
    UnwindHandlers(on);
    Task* const before = on.Occupant();
    on.known = true;
    on.running = nullptr;
    if (to.id != 0) {
        Task& task = TaskOf(to, on.number);
        tasks_.MoveTo(task, on.number);
        if (task.condition.IsKept() || task.condition.activity == Activity::Away)
            Count(on, Loss::ReadyTimesUnknown);
        tasks_.Run(task, on.number);
        on.running = &task;
        on.last = task.id;
    }
    DispatchToTask(on, on.running);
    if (!before || before == on.running) return;
    const bool moves = before->destination != kAnyProcessor;
    before->condition.activity = Activity::Unknown;
    if (Loses(*before)) return;
    BecomeReady(*before, false, moves ? before->destination : before->processor);
}

void Decoder::OnDispatchFrom(Processor& on, const ContextKey& from) {
    constexpr ContextKey kIdle{ContextKind::Task, 0};
    if (from.kind == ContextKind::Unknown && !RunsAlready(on, kIdle))
        return OnDispatchTo(on, kIdle);
    if (from.kind == ContextKind::Unknown) return;
    UnwindHandlers(on);
    Learn(on, from);
    if (!on.running) {
        if (from.id != 0 && on.last != from.id) Count(on, Loss::DispatchesFromOther);
        return;
    }
    if (on.running->id != from.id) Count(on, Loss::DispatchesFromOther);
    OnDispatchTo(on, {ContextKind::Task, 0});
}

// Where it is not told who is switched out, it is who runs.
void Decoder::OnSwitchedOut(Processor& on, const ContextKey& from) {
    UnwindHandlers(on);
    if (from.kind == ContextKind::Unknown) {
        if (on.running) OnSwitchedOut(on, {ContextKind::Task, on.running->id});
        return;
    }
    Learn(on, from);
    if (from.id == 0) return;
    Task& task = TaskOf(from, on.number);
    const auto* call = task.calls.Innermost();
    const bool waits = (call && call->blocked) || Holds(inferred_.waits, nextWait_);
    if (waits) tasks_.Set(task, Wait(task, 0));
}

void Decoder::OnSwitch(Processor& on, const Record& record) {
    UnwindHandlers(on);
    Learn(on, record.from);
    if (record.from.id != 0) {
        Task& task = TaskOf(record.from, on.number);
        if (on.running != &task) Count(on, Loss::DispatchesFromOther);
        if (record.state != TaskState::Runnable) tasks_.Set(task, NewCondition(task, record));
    }
    OnDispatchTo(on, record.subject);
}

void Decoder::OnEnter(Processor& on, const ContextKey& handler) {
    constexpr std::size_t kDeepest = 64;
    if (on.handlers.size() == kDeepest) {
        Count(on, Loss::HandlersNotLeft);
        on.handlers.erase(on.handlers.begin());
    }
    on.handlersSeen = true;
    on.handlers.push_back({handler, {}});
    if (on.timeline) on.timeline->writer.Dispatch(on.timeline->writer.ContextOf(handler));
}

void Decoder::OnLeave(Processor& on, const ContextKey& handler, const ContextKey& then) {
    auto at = on.handlers.size();
    const bool innermost = handler.kind == ContextKind::Unknown;
    while (at > 0 && !innermost && on.handlers[at - 1].key != handler) --at;
    if (at == 0) return OnLeaveUnentered(on, handler);
    Count(on, Loss::HandlersNotLeft, on.handlers.size() - at);
    for (; on.handlers.size() >= at; on.handlers.pop_back())
        Count(on, Loss::CallsWithoutReturn, on.handlers.back().calls.Clear());
    if (on.handlers.empty() && then.kind == ContextKind::Task) return OnDispatchTo(on, then);
    DispatchBelow(on);
}

void Decoder::OnLeaveUnentered(Processor& on, const ContextKey& handler) {
    const bool ranAtStart = !on.known && !on.handlersSeen;
    Count(on, ranAtStart ? Loss::HandlersBeforeStart : Loss::HandlersNotEntered);
    on.handlersSeen = true;
    if (!ranAtStart || !on.timeline) return;
    EventWriter& writer = on.timeline->writer;
    writer.LearnCurrent(writer.ContextOf(handler));
    if (writer.Current() != writer.Unknown()) DispatchBelow(on);
}

// From here on anybody may run, and any task may have changed its state: what is shown of them ends
// here. What runs on another processor goes on there. Its tasks end with a moment of not knowing
// who runs, for a state can only end with an event of the same processor.
void Decoder::OnGap(Processor& on) {
    on.handlers.clear();
    on.otherCalls = {};
    on.known = on.handlersSeen = false;
    on.running = nullptr;
    const auto ended = tasks_.ForgetAllOn(on.number);
    for (Timeline* const timeline : timelines_) {
        const bool here = timeline == on.timeline;
        if (!here && std::ranges::find(ended, timeline) == ended.end()) continue;
        EventWriter& writer = timeline->writer;
        const auto current = writer.Current();
        if (here || current != writer.Unknown()) writer.Dispatch(writer.Unknown());
        if (!here) writer.Dispatch(current);
    }
}

void Decoder::OnCall(Processor& on, const Record& record) {
    const auto call = names_.Intern(record.name);
    const CallInfo& info = names_.Get(call).info;
    OpenCall open{call, next_, on.timeline};
    if (on.timeline) {
        EventWriter& writer = on.timeline->writer;
        open.event = writer.Call(writer.Current(), info.cls, call);
    }
    if (record.kind == RecordKind::InstantCall || !info.returns) return;
    if (on.Calls().Push(open)) Count(on, Loss::CallsWithoutReturn);
}

void Decoder::OnPriority(const Processor& on, const Record& record) {
    auto task = record.subject.id;
    if (task == 0 && on.handlers.empty() && on.Occupant()) task = on.running->id;
    if (task != 0) priorities_.Set(task, record.priority, moment_);
}

void Decoder::OnReturn(Processor& on, const Record& record) {
    std::uint64_t skipped = 0;
    // A recording that was cut may say who returns, whoever runs.
    const bool named = record.subject.kind == ContextKind::Task && record.subject.id != 0;
    CallStack& calls = named ? TaskOf(record.subject, on.number).calls : on.Calls();
    const auto call = calls.Return(record.name, names_, skipped);
    Count(on, Loss::CallsWithoutReturn, skipped);
    if (!call) {
        const bool missing = calls.WasUsed() || !on.handlers.empty();
        return Count(on, missing ? Loss::ReturnsWithoutCall : Loss::CallsBeforeStart);
    }
    if (call->timeline) call->timeline->writer.Return(call->event);
}

Timeline* Decoder::TimelineOf(std::uint32_t processor) const {
    const auto at = std::ranges::find(timelines_, processor, &Timeline::processor);
    return at == timelines_.end() ? nullptr : *at;
}

Processor& Decoder::ProcessorOf(std::uint32_t number) {
    if (lastProcessor_ && lastProcessor_->number == number) return *lastProcessor_;
    const auto [at, isNew] = processors_.try_emplace(number);
    lastProcessor_ = &at->second;
    if (!isNew) return *lastProcessor_;
    lastProcessor_->number = number;
    lastProcessor_->timeline = TimelineOf(number);
    lastProcessor_->known = recording_.StartsIdle(number);
    if (lastProcessor_->known) LearnIdle(*lastProcessor_);
    LearnRunning(*lastProcessor_);
    return *lastProcessor_;
}

// What the file says of the start.
void Decoder::LearnRunning(Processor& on) {
    const auto running = recording_.RunsAtStart(on.number);
    if (running.empty()) return;
    Learn(on, running.front());
    for (std::size_t i = 1; i < running.size(); ++i) {
        on.handlersSeen = true;
        on.handlers.push_back({running[i], {}});
        if (on.timeline)
            on.timeline->writer.LearnCurrent(on.timeline->writer.ContextOf(running[i]));
    }
}

Task& Decoder::TaskOf(const ContextKey& key, std::uint32_t processor) {
    if (!declaredTasks_.empty() && !tasks_.Knows(key.id) && !declaredTasks_.contains(key.id))
        losses_.Add(Loss::TasksNotDeclared);
    return tasks_.Get(key.id, processor);
}

// A task that becomes ready stands on the processor that runs it next; where that is not in sight,
// on the fallback.
void Decoder::BecomeReady(Task& task, bool suspended, std::uint32_t fallback) {
    tasks_.MoveTo(task, window_.NextRunOf(task.id).value_or(fallback));
    tasks_.Set(task, {Activity::Ready, suspended});
}

// A record that takes the processor from a context tells that it has been running.
void Decoder::Learn(Processor& on, const ContextKey& running) {
    if (on.known) return;
    on.known = true;
    if (running.id == 0) return LearnIdle(on);
    Task& task = TaskOf(running, on.number);
    // A recording may name tasks without saying where they are.
    tasks_.MoveTo(task, on.number);
    if (task.condition.activity == Activity::Unknown) tasks_.Run(task, on.number);
    on.running = &task;
    on.last = task.id;
    if (on.timeline && task.here.timeline == on.timeline)
        on.timeline->writer.LearnCurrent(tasks_.ContextOf(task));
}

// The idle state has been running.
void Decoder::LearnIdle(Processor& on) {
    if (on.timeline) on.timeline->writer.LearnCurrent(on.timeline->writer.Idle());
}

// No task: the idle state.
void Decoder::DispatchToTask(Processor& on, Task* task) {
    if (!on.timeline) return;
    EventWriter& writer = on.timeline->writer;
    writer.Dispatch(task ? tasks_.ContextOf(*task) : writer.Idle());
}

// A dispatch between tasks while a handler is open: the handler's end is missing.
void Decoder::UnwindHandlers(Processor& on) {
    Count(on, Loss::HandlersNotLeft, on.handlers.size());
    on.handlers.clear();
}

// Back to what the handler that has ended had interrupted.
void Decoder::DispatchBelow(Processor& on) {
    if (!on.timeline) return;
    EventWriter& writer = on.timeline->writer;
    if (!on.handlers.empty()) return writer.Dispatch(writer.ContextOf(on.handlers.back().key));
    if (Task* task = on.Occupant()) return DispatchToTask(on, task);
    writer.Dispatch(on.known ? writer.Idle() : writer.Unknown());
}

bool Decoder::RunsAlready(const Processor& on, const ContextKey& key) const {
    if (!on.known || !on.handlers.empty()) return false;
    if (key.id == 0) return !on.running;
    return on.Occupant() && on.running->id == key.id;
}

}  // namespace kvx::service
