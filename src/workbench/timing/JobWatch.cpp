#include "workbench/timing/JobWatch.h"

#include <charconv>

namespace kvx::timing {

JobWatch::JobWatch(const Walk& walk, const JobBuilder& jobs, Incidents& out)
    : walk_(walk),
      jobs_(jobs),
      out_(out),
      inJob_(walk.From().contexts.Count()),
      holds_(inJob_.size()),
      taken_(walk.From().facts.AllObjects().Count()),
      held_(taken_.size()) {}

void JobWatch::OnTask(const Moment& moment, ContextId task, const TaskStatus&, const TaskStatus&,
                      const Releaser&) {
    const bool was = inJob_[task];
    inJob_[task] = jobs_.IsInJob(task);
    if (!was || inJob_[task]) return;
    if (holds_[task] == 0) return;
    for (ObjectId object = 0; object < held_.size(); ++object)
        if (held_[object].by == task) NoteHeld(object, task, moment.time, moment.at, false);
}

// The same of one task and one object is told once, with how often it came.
void JobWatch::NoteHeld(ObjectId object, ContextId task, std::int64_t time, EventRef at,
                        bool goesOn) {
    const auto [known, isNew] = noted_.try_emplace({task, object, goesOn}, out_.size());
    if (!isNew) {
        Incident& incident = out_[known->second];
        ++incident.measured;
        incident.end = time;
        return;
    }
    const Held& held = held_[object];
    Add(FindingKind::LockHeldAtEnd, {task}, object, 0, {held.since, time}, {held.event, at});
    out_.back().goesOn = goesOn;
}

void JobWatch::OnCall(const Moment& moment, ContextId by, const CallFact& fact) {
    if (fact.use != service::CallUse::Starts || fact.object == kNoObject) return;
    const auto& text = walk_.From().facts.AllObjects().Get(fact.object).text;
    std::uint64_t id = 0;
    std::from_chars(text.data(), text.data() + text.size(), id);
    const auto task = walk_.From().contexts.TaskOf(id);
    if (task == kNobody || !jobs_.IsInJob(task)) return;
    const bool refused = fact.outcome == Outcome::Failed;
    const auto error = walk_.From().facts.ErrorOf(moment.at.timeline, moment.at.event);
    if (refused && !error.ends_with("QOVR")) return;
    const auto job = jobs_.JobOf(task, moment.at.timeline);
    const auto [known, isNew] = overruns_.try_emplace({task, job}, out_.size());
    if (!isNew) {
        ++out_[known->second].measured;
        out_[known->second].end = moment.time;
        return;
    }
    Add(FindingKind::Overrun, {task, by}, kNoObject, job, {moment.time, moment.time}, {moment.at});
}

void JobWatch::OnTake(const Moment& moment, ObjectId object, ContextId by, ContextId before) {
    taken_[object] = true;
    if (before == by) return;
    SetHeld(object, {by, moment.time, moment.at});
}

void JobWatch::OnGive(const Moment& moment, ObjectId object, ContextId by, ContextId before) {
    const bool ended = by == kNobody;
    if (ended && held_[object].by == before)
        NoteHeld(object, before, moment.time, moment.at, false);
    if (!ended && before != by && taken_[object])
        Add(FindingKind::UnlockWithoutLock, {by}, object, 0, {moment.time, moment.time},
            {moment.at});
    if (walk_.HolderOf(object) == kNobody) SetHeld(object, {});
}

void JobWatch::SetHeld(ObjectId object, const Held& held) {
    if (held_[object].by != kNobody) --holds_[held_[object].by];
    held_[object] = held;
    if (held.by != kNobody) ++holds_[held.by];
}

void JobWatch::OnEnd(std::int64_t time) {
    for (ObjectId object = 0; object < held_.size(); ++object)
        if (held_[object].by != kNobody)
            NoteHeld(object, held_[object].by, time, held_[object].event, true);
}

void JobWatch::Add(FindingKind kind, std::vector<ContextId> contexts, ObjectId object,
                   std::uint32_t job, Span span, std::vector<EventRef> evidence) {
    Incident incident;
    incident.kind = kind;
    incident.contexts = std::move(contexts);
    incident.object = object;
    incident.job = job;
    incident.start = span.start;
    incident.end = span.end;
    incident.measured = 1;
    incident.evidence = std::move(evidence);
    out_.push_back(std::move(incident));
}

}  // namespace kvx::timing
