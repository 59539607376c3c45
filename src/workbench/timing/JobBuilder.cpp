#include "workbench/timing/JobBuilder.h"

#include <algorithm>
#include <utility>

#include "host/TraceCodes.h"

namespace kvx::timing {

JobBuilder::JobBuilder(const Walk& walk, const Census& census, const JobEndRules& rules, Jobs& jobs)
    : walk_(walk),
      source_(walk.From()),
      census_(census),
      rules_(rules),
      jobs_(jobs),
      missed_(source_.contexts.Count()),
      open_(source_.contexts.Count()),
      handlers_(source_.decoded.Timelines().size()),
      left_(source_.decoded.Timelines().size(), kNobody) {}

void JobBuilder::OnTask(const Moment& moment, ContextId task, const TaskStatus& before,
                        const TaskStatus& now, const Releaser& by) {
    const bool lost = now.doing == Doing::Unknown && now.beganUnseen;
    if (lost) missed_[task] = true;
    const bool ends = IsBetween(task, now);
    const bool ready = now.doing == Doing::Ready || now.doing == Doing::Unknown;
    if (!ready) std::ranges::replace(left_, task, kNobody);
    if (!open_[task]) {
        const bool seen = IsBetween(task, before) && now.doing == Doing::Ready;
        if (!ends && now.doing != Doing::Unknown) Open(moment, task, now, by, seen);
        return;
    }
    auto& job = jobs_.TaskJobs(task).back();
    Spend(job, before, moment.time);
    NotePreemption(task, before, now);
    if (lost) {
        open_[task] = false;
        return Close(job, moment.time, kEndUnknown);
    }
    if (ends) {
        open_[task] = false;
        const bool dormant = now.doing == Doing::Dormant;
        return Close(job, moment.time, dormant ? kEndsDormant : now.wait.cause);
    }
    if (now.doing != Doing::Runs || job.hasStart || !job.hasActivation || job.hasUnknown) return;
    job.hasStart = true;
    job.start = moment.time;
    job.timeline = static_cast<std::uint16_t>(now.timeline);
}

void JobBuilder::Open(const Moment& moment, ContextId task, const TaskStatus& now,
                      const Releaser& by, bool seen) {
    open_[task] = true;
    auto& job = jobs_.TaskJobs(task).emplace_back();
    job.activation = job.end = moment.time;
    job.hasActivation = seen;
    job.gapBefore = std::exchange(missed_[task], false);
    job.event = moment.at.event;
    job.eventTimeline = static_cast<std::uint16_t>(moment.at.timeline);
    job.timeline = static_cast<std::uint16_t>(now.timeline);
    job.by = by;
    if (by.context != kNobody) job.byJob = JobOf(by.context, by.timeline);
}

// The time since the task began to do that.
void JobBuilder::Spend(Jobs::TaskJob& job, const TaskStatus& doing, std::int64_t until) {
    const auto time = until - doing.since;
    if (doing.suspended) job.suspended += time;
    if (doing.doing == Doing::Runs) job.cet += time;
    const bool ready = doing.doing == Doing::Ready || doing.doing == Doing::Interrupted;
    if (ready && !doing.suspended) job.ready += time;
    if (doing.doing == Doing::Unknown && time > 0) job.hasUnknown = true;
}

void JobBuilder::Close(Jobs::TaskJob& job, std::int64_t time, std::uint8_t endsIn) {
    job.end = time;
    job.hasEnd = endsIn != kEndUnknown;
    job.endsIn = endsIn;
}

// Another task has the processor that the task gave up although it is ready. Some kernels let the
// processor idle for a moment in between.
void JobBuilder::NotePreemption(ContextId task, const TaskStatus& before, const TaskStatus& now) {
    const auto count = [&](ContextId preempted) {
        if (open_[preempted]) ++jobs_.TaskJobs(preempted).back().preemptions;
    };
    const bool ready = now.doing == Doing::Ready && !now.suspended;
    if (!ready || before.doing != Doing::Unknown || now.beganUnseen) return;
    if (walk_.TaskOn(before.timeline) != kNobody)
        count(task);
    else
        left_[before.timeline] = task;
}

void JobBuilder::OnDispatch(const Moment& moment, ContextId, ContextId to) {
    auto& left = left_[moment.at.timeline];
    if (left == kNobody || !source_.contexts.Get(to).IsTask()) return;
    const auto& status = walk_.StatusOf(left);
    const bool waitsFor = status.doing == Doing::Ready && !status.suspended && open_[left];
    if (waitsFor && left != to) ++jobs_.TaskJobs(left).back().preemptions;
    left = kNobody;
}

void JobBuilder::OnEnter(const Moment& moment, ContextId handler, std::size_t depth, bool seen) {
    auto& jobs = jobs_.HandlerJobs(handler);
    auto& job = jobs.emplace_back();
    job.start = job.end = moment.time;
    job.event = moment.at.event;
    job.timeline = static_cast<std::uint16_t>(moment.at.timeline);
    job.depth = static_cast<std::uint8_t>(std::min<std::size_t>(depth, 0xFF));
    job.seenStart = seen;
    job.seenEnd = false;
    job.gapBefore = std::exchange(missed_[handler], false);
    handlers_[moment.at.timeline].push_back({handler, jobs.size() - 1, 0});
}

void JobBuilder::OnNested(const Moment& moment, ContextId handler, std::size_t depth,
                          bool interrupted) {
    OpenHandler& open = handlers_[moment.at.timeline][depth];
    if (interrupted)
        open.interruptedSince = moment.time;
    else
        jobs_.HandlerJobs(handler)[open.job].interrupted += moment.time - open.interruptedSince;
}

void JobBuilder::OnLeave(const Moment& moment, ContextId handler, std::size_t depth, bool seen) {
    auto& open = handlers_[moment.at.timeline];
    auto& job = jobs_.HandlerJobs(handler)[open[depth].job];
    job.end = moment.time;
    job.seenEnd = seen;
    open.resize(depth);
}

// Any handler may have run in the gap.
void JobBuilder::OnGap(const Moment&) {
    for (ContextId id = 0; id < missed_.size(); ++id)
        if (source_.contexts.Get(id).IsHandler()) missed_[id] = true;
    std::ranges::fill(left_, kNobody);
}

void JobBuilder::OnEnd(std::int64_t time) {
    for (ContextId task = 0; task < open_.size(); ++task) {
        if (!open_[task]) continue;
        auto& job = jobs_.TaskJobs(task).back();
        Spend(job, walk_.StatusOf(task), time);
        Close(job, time, kEndUnknown);
    }
    for (const auto& stack : handlers_)
        for (const auto& open : stack) jobs_.HandlerJobs(open.handler)[open.job].end = time;
}

std::uint32_t JobBuilder::JobOf(ContextId context, std::uint32_t timeline) const {
    if (open_[context]) return static_cast<std::uint32_t>(jobs_.TaskJobs(context).size());
    for (const auto& open : handlers_[timeline])
        if (open.handler == context) return static_cast<std::uint32_t>(open.job + 1);
    return 0;
}

bool JobBuilder::IsBetween(ContextId task, const TaskStatus& status) const {
    if (status.doing == Doing::Dormant) return true;
    return status.doing == Doing::Waits && EndsHere(task, status.wait);
}

bool JobBuilder::EndsHere(ContextId task, const Wait& wait) const {
    if (const auto& told = rules_[task]) {
        if (std::ranges::count(told->causes, wait.cause) > 0) return true;
        if (wait.call == service::kNoRecord) return false;
        const auto& name = source_.decoded.Names().Get(wait.call).name;
        const auto& kernel = source_.decoded.GetRecording().GetKernel();
        return std::ranges::any_of(
            told->calls, [&](const std::string& call) { return kernel.SameCall(call, name); });
    }
    if (EndsJob(wait.cause)) return true;
    return !census_.showsEnds[task] && wait.cause == host::Code(host::StateCode::Semaphore) &&
           !walk_.IsLock(wait.object);
}

}  // namespace kvx::timing
