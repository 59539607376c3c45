#include "workbench/timing/Walk.h"

#include <algorithm>
#include <utility>

#include "host/OSTraceService.h"
#include "host/TraceCodes.h"

namespace kvx::timing {

using host::StateCode;
using service::CallUse;
using service::kNoRecord;

Span SpanOf(const service::DecodedRecording& decoded) {
    const auto& recording = decoded.GetRecording();
    Span span{recording.FirstTime(), recording.LastTime()};
    bool any = false;
    for (const auto& timeline : decoded.Timelines()) {
        const auto& events = timeline->events;
        if (events.Count() == 0) continue;
        span.start = any ? std::min(span.start, events.Time(0)) : events.Time(0);
        span.end = std::max(span.end, events.Time(events.Count() - 1));
        any = true;
    }
    return span;
}

Walk::Walk(const Source& source, const LockSet* locks)
    : source_(source),
      tasks_(source.contexts.Count()),
      calls_(source.contexts.Count()),
      tracker_(source.facts.AllObjects(), locks) {
    for (ContextId id = 0; id < source.contexts.Count(); ++id) {
        isTask_.push_back(source.contexts.Get(id).IsTask());
        isHandler_.push_back(source.contexts.Get(id).IsHandler());
    }
    for (const auto& timeline : source.decoded.Timelines()) {
        timelines_.push_back(timeline.get());
        cpus_.push_back({.number = timeline->processor});
    }
}

void Walk::Run(std::int64_t until) {
    while (Step(until)) {
    }
}

bool Walk::Go(std::size_t events) {
    for (; events > 0; --events)
        if (!Step(std::numeric_limits<std::int64_t>::max())) return false;
    return true;
}

Walk Walk::Branch() const {
    Walk branch = *this;
    branch.observers_.clear();
    return branch;
}

// The next event; false: there is none until then.
bool Walk::Step(std::int64_t until) {
    if (!merge_) Begin();
    const auto event = merge_->Next();
    if (event && event->time > until) {
        PassTo(until);
        return false;
    }
    if (!event) {
        TakeReturned(kNoRecord - 1);
        PassTo(span_.end);
        Tell(&IWalkObserver::OnEnd, span_.end);
        return false;
    }
    TakeReturned(event->record);
    PassTo(event->time);
    now_.record = event->record;
    now_.at = {event->timeline, event->number};
    Apply(*event);
    return true;
}

// What runs at the start shows in the first dispatch of a processor.
void Walk::Begin() {
    merge_.emplace(timelines_);
    span_ = SpanOf(source_.decoded);
    now_.time = span_.start;
    for (auto& status : tasks_) status.since = now_.time;
    for (std::uint32_t timeline = 0; timeline < timelines_.size(); ++timeline) {
        const auto& events = timelines_[timeline]->events;
        const auto dispatches = events.Dispatches(events.Count());
        if (dispatches.empty()) continue;
        now_.at = {timeline, dispatches.front()};
        Cpu& cpu = cpus_[timeline];
        cpu.current = source_.contexts.Of(timeline, events.Context(dispatches.front()));
        cpu.known = isTask_[cpu.current] || source_.contexts.Get(cpu.current).IsIdle();
        if (isHandler_[cpu.current]) {
            cpu.handlers.push_back(cpu.current);
            Tell(&IWalkObserver::OnEnter, now_, cpu.current, std::size_t{0}, false);
        }
        if (!isTask_[cpu.current]) continue;
        cpu.task = cpu.current;
        Set(cpu.task, {.doing = Doing::Runs, .beganUnseen = true, .timeline = timeline});
    }
}

void Walk::Apply(const service::EventMerge::Event& event) {
    const auto& events = timelines_[event.timeline]->events;
    switch (events.Kind(event.number)) {
        case kEventDispatch:
            return OnDispatch(event.timeline,
                              source_.contexts.Of(event.timeline, events.Next(event.number)));
        case kEventState:
            return OnState(events, event.number, event.timeline);
        default:
            return OnCall(events, event.number, event.timeline);
    }
}

void Walk::OnDispatch(std::uint32_t timeline, ContextId to) {
    Cpu& cpu = cpus_[timeline];
    const auto from = cpu.current;
    cpu.current = to;
    DropOpenEnded(from);
    Tell(&IWalkObserver::OnDispatch, now_, from, to);
    if (isHandler_[to]) return EnterHandler(timeline, to);
    if (!isTask_[to] && !source_.contexts.Get(to).IsIdle()) return OnUnknown(timeline);
    if (std::exchange(cpu.inGap, false)) Tell(&IWalkObserver::OnGapEnd, now_);
    cpu.known = true;
    EndHandlersAbove(timeline, 0);
    const auto left = cpu.task;
    cpu.task = isTask_[to] ? to : kNobody;
    if (left != kNobody && left != to) Leave(left);
    if (cpu.task == kNobody) return;
    const TaskStatus& before = tasks_[to];
    const bool elsewhere = before.timeline != timeline && cpus_[before.timeline].task == to;
    if (elsewhere) cpus_[before.timeline].task = kNobody;
    const bool unseen =
        before.doing == Doing::Unknown && (before.beganUnseen || before.since < now_.time);
    Set(to, {.doing = Doing::Runs, .beganUnseen = unseen, .timeline = timeline});
}

// Of a call without a recorded return nobody knows how long it lasts; not beyond the moment when
// its context stops running.
void Walk::DropOpenEnded(ContextId context) {
    if (context == kNobody) return;
    auto& open = calls_[context];
    while (!open.empty() && open.back().returned == kNoRecord) open.pop_back();
}

// One that runs below others goes on; any other begins.
void Walk::EnterHandler(std::uint32_t timeline, ContextId handler) {
    Cpu& cpu = cpus_[timeline];
    const auto below = std::ranges::find(cpu.handlers, handler);
    if (below != cpu.handlers.end()) {
        const auto depth = static_cast<std::size_t>(below - cpu.handlers.begin());
        if (depth + 1 == cpu.handlers.size()) return;
        EndHandlersAbove(timeline, depth + 1);
        return Tell(&IWalkObserver::OnNested, now_, handler, depth, false);
    }
    const auto depth = cpu.handlers.size();
    if (depth > 0) Tell(&IWalkObserver::OnNested, now_, cpu.handlers.back(), depth - 1, true);
    cpu.handlers.push_back(handler);
    if (depth == 0 && cpu.task != kNobody && tasks_[cpu.task].doing == Doing::Runs) {
        TaskStatus status = tasks_[cpu.task];
        status.doing = Doing::Interrupted;
        Set(cpu.task, status);
    }
    Tell(&IWalkObserver::OnEnter, now_, handler, depth, true);
}

void Walk::EndHandlersAbove(std::uint32_t timeline, std::size_t depth, bool seen) {
    auto& handlers = cpus_[timeline].handlers;
    while (handlers.size() > depth) {
        const auto handler = handlers.back();
        handlers.pop_back();
        calls_[handler].clear();
        Tell(&IWalkObserver::OnLeave, now_, handler, handlers.size(), seen);
    }
}

// Nobody knows who runs: at the start, or because the recording has a gap. Then every state that
// ends here is lost.
void Walk::OnUnknown(std::uint32_t timeline) {
    Cpu& cpu = cpus_[timeline];
    const bool gap = cpu.known;
    EndHandlersAbove(timeline, 0, !gap);
    if (!gap) return;
    cpu.known = false;
    cpu.inGap = true;
    const auto task = std::exchange(cpu.task, kNobody);
    const auto& events = timelines_[timeline]->events;
    for (ContextId id = 0; id < tasks_.size(); ++id) {
        const TaskStatus& status = tasks_[id];
        const bool shown = status.doing == Doing::Ready || status.doing == Doing::Waits ||
                           status.doing == Doing::Dormant;
        const bool ends = shown && status.event.timeline == timeline &&
                          events.EndEvent(status.event.event) == now_.at.event;
        if (id == task || ends) Forget(id);
    }
    tracker_.FreeAll();
    Tell(&IWalkObserver::OnGap, now_);
}

void Walk::Forget(ContextId task) {
    calls_[task].clear();
    TaskStatus status;
    status.timeline = tasks_[task].timeline;
    Set(task, status);
}

// It does not run any more. What it does instead says a state event, mostly of the same time.
void Walk::Leave(ContextId task) {
    const TaskStatus& before = tasks_[task];
    if (before.doing != Doing::Runs && before.doing != Doing::Interrupted) return;
    Set(task, {.doing = Doing::Unknown, .beganUnseen = false, .timeline = before.timeline});
}

// A task that is elsewhere is told of there.
void Walk::OnState(const service::EventStore& events, std::uint32_t event, std::uint32_t timeline) {
    if (events.Flags(event) & host::kFlagPaused) return;
    const auto task = source_.contexts.Of(timeline, events.Next(event));
    if (!isTask_[task]) return;
    const TaskStatus before = tasks_[task];
    TaskStatus now{.timeline = timeline};
    now.suspended = (events.Flags(event) & host::kFlagSuspended) != 0;
    now.beganUnseen =
        before.doing == Doing::Unknown && (before.beganUnseen || before.since < now_.time);
    const auto code = static_cast<StateCode>(events.Code(event));
    if (code == StateCode::Ready) {
        const bool becomes = before.doing == Doing::Waits || before.doing == Doing::Dormant;
        now.doing = Doing::Ready;
        return Set(task, now, becomes ? ReleaserNow(task, timeline) : Releaser());
    }
    if (code == StateCode::Dormant) {
        now.doing = Doing::Dormant;
        calls_[task].clear();
        return Set(task, now);
    }
    now.doing = Doing::Waits;
    now.wait = WaitOf(events, event, timeline, before);
    if (before.doing == Doing::Waits && before.wait == now.wait)
        now.beganUnseen = before.beganUnseen;
    Set(task, now);
}

Wait Walk::WaitOf(const service::EventStore& events, std::uint32_t event, std::uint32_t timeline,
                  const TaskStatus& before) const {
    const auto record = events.RecordOf(event);
    const bool goesOn = before.doing == Doing::Waits && before.wait.record == record;
    if (goesOn && record != kNoRecord) return before.wait;
    Wait wait{.cause = events.Code(event), .record = record};
    if (record == kNoRecord) {
        if (wait.cause == host::Code(StateCode::Sleeping)) wait.cause = kCauseUnknown;
        return wait;
    }
    const auto call = FindCallOfRecord(events, record, event);
    if (call == host::kOpenEnd) return wait;
    wait.call = events.Call(call);
    if (source_.decoded.Names().Get(wait.call).info.waitCode == 0) wait.cause = kCauseUnknown;
    if (const auto* fact = source_.facts.Find(timeline, call)) {
        wait.object = fact->object;
        wait.takes = fact->use == CallUse::Takes;
        wait.succeeds = fact->outcome == Outcome::Succeeded;
    }
    return wait;
}

void Walk::Set(ContextId task, TaskStatus now, const Releaser& by) {
    const TaskStatus before = tasks_[task];
    now.since = now_.time;
    now.event = now_.at;
    tasks_[task] = now;
    ApplyLocks(task, before, now);
    Tell(&IWalkObserver::OnTask, now_, task, before, now, by);
}

// Whoever was handed a lock has it from when its wait ended; a task that ends has no mutex any
// more.
void Walk::ApplyLocks(ContextId task, const TaskStatus& before, const TaskStatus& now) {
    const bool waited =
        before.doing == Doing::Waits && (now.doing != Doing::Waits || !(now.wait == before.wait));
    const Wait& wait = before.wait;
    if (waited && wait.takes && wait.succeeds && IsLock(wait.object))
        Tell(&IWalkObserver::OnTake, now_, wait.object, task, tracker_.Take(wait.object, task));
    if (now.doing != Doing::Dormant || before.doing == Doing::Dormant) return;
    for (const auto object : tracker_.MutexesOf(task)) {
        tracker_.Free(object);
        Tell(&IWalkObserver::OnGive, now_, object, kNobody, task);
    }
}

void Walk::OnCall(const service::EventStore& events, std::uint32_t event, std::uint32_t timeline) {
    const auto by = source_.contexts.Of(timeline, events.Context(event));
    const auto returned = events.ReturnRecord(event);
    auto& open = calls_[by];
    while (!open.empty() &&
           (open.back().returned == kNoRecord || open.back().returned <= now_.record))
        open.pop_back();
    open.push_back({events.Call(event), returned});
    const auto facts = source_.facts.Of(timeline);
    Cpu& cpu = cpus_[timeline];
    if (cpu.nextFact == facts.size() || facts[cpu.nextFact].event != event) return;
    const CallFact& fact = facts[cpu.nextFact++];
    Tell(&IWalkObserver::OnCall, now_, by, fact);
    if (!IsLock(fact.object)) return;
    if (fact.use == CallUse::Gives && fact.outcome != Outcome::Failed)
        Tell(&IWalkObserver::OnGive, now_, fact.object, by, tracker_.Give(fact.object, by));
    if (fact.use != CallUse::Takes || fact.outcome != Outcome::Succeeded || fact.waits) return;
    if (tracker_.IsFree(fact.object) || returned == kNoRecord)
        Tell(&IWalkObserver::OnTake, now_, fact.object, by, tracker_.Take(fact.object, by));
    else
        tracker_.TakeLater(fact.object, by, returned);
}

void Walk::TakeReturned(std::uint32_t record) {
    while (tracker_.HasReturned(record)) {
        const auto next = tracker_.NextReturned();
        PassTo(source_.decoded.GetRecording().TimeOf(next.returned));
        Tell(&IWalkObserver::OnTake, now_, next.object, next.by,
             tracker_.Take(next.object, next.by));
    }
}

// The recording's order of processors is that of the timelines.
std::uint32_t Walk::TimelineOfRecord(std::uint32_t record, std::uint32_t fallback) const {
    if (cpus_.size() == 1 || record == kNoRecord) return fallback;
    const auto processor = source_.decoded.GetRecording().ProcessorOf(record);
    const auto at = std::ranges::find(cpus_, processor, &Cpu::number);
    return at == cpus_.end() ? fallback : static_cast<std::uint32_t>(at - cpus_.begin());
}

// What ran where the record was written that says so.
Releaser Walk::ReleaserNow(ContextId task, std::uint32_t timeline) {
    const auto record = timelines_[timeline]->events.RecordOf(now_.at.event);
    const auto where = TimelineOfRecord(record, timeline);
    const auto context = cpus_[where].current;
    if (context == kNobody || context == task || !(isTask_[context] || isHandler_[context]))
        return {};
    auto& open = calls_[context];
    while (!open.empty() && open.back().returned != kNoRecord && open.back().returned <= record)
        open.pop_back();
    return {context, open.empty() ? kNoRecord : open.back().name, where};
}

void Walk::PassTo(std::int64_t time) {
    if (time <= now_.time) return;
    Tell(&IWalkObserver::OnPasses, now_.time, time);
    now_.time = time;
}

}  // namespace kvx::timing
