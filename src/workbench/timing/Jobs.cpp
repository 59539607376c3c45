#include "workbench/timing/Jobs.h"

namespace kvx::timing {

Job Jobs::At(ContextId context, std::size_t index) const {
    const auto& tasks = tasks_[context];
    return tasks.empty() ? AtHandler(handlers_[context], index) : AtTask(tasks, index);
}

Job Jobs::AtTask(const std::deque<TaskJob>& jobs, std::size_t index) const {
    const TaskJob& kept = jobs[index];
    Job job;
    job.number = static_cast<std::uint32_t>(index + 1);
    job.seen = {kept.activation, kept.end};
    job.cut = !kept.hasActivation || !kept.hasEnd || kept.hasUnknown;
    if (kept.hasActivation) job.activation = kept.activation;
    if (kept.hasStart) job.start = kept.start;
    if (kept.hasEnd) job.end = kept.end;
    if (!job.cut) {
        job.cet = kept.cet;
        job.ready = kept.ready;
        job.suspended = kept.suspended;
        job.preemptions = kept.preemptions;
    }
    const bool followed =
        index + 1 < jobs.size() && jobs[index + 1].hasActivation && !jobs[index + 1].gapBefore;
    if (followed && kept.hasActivation) job.period = jobs[index + 1].activation - kept.activation;
    job.endsIn = kept.endsIn;
    job.startedBy = kept.by;
    job.startedByJob = kept.byJob;
    job.event = {kept.eventTimeline, kept.event};
    job.timeline = kept.timeline;
    return job;
}

Job Jobs::AtHandler(const std::deque<HandlerJob>& jobs, std::size_t index) const {
    const HandlerJob& kept = jobs[index];
    Job job;
    job.number = static_cast<std::uint32_t>(index + 1);
    job.seen = {kept.start, kept.end};
    job.cut = !kept.seenStart || !kept.seenEnd;
    if (kept.seenStart) job.activation = job.start = kept.start;
    if (kept.seenEnd) job.end = kept.end;
    if (!job.cut) {
        job.ready = kept.interrupted;
        job.cet = kept.end - kept.start - kept.interrupted;
        job.suspended = job.preemptions = 0;
    }
    const bool followed = index + 1 < jobs.size() && !jobs[index + 1].gapBefore;
    if (followed && kept.seenStart) job.period = jobs[index + 1].start - kept.start;
    job.event = {kept.timeline, kept.event};
    job.timeline = kept.timeline;
    job.depth = kept.depth;
    return job;
}

Job Job::CutTo(const Span& range) const {
    Job job = *this;
    const bool early = seen.start < range.start;
    const bool late = seen.end > range.end;
    if (activation && period && *activation + *period > range.end) job.period.reset();
    if (!early && !late) return job;
    job.cut = true;
    if (early) {
        job.activation.reset();
        job.start.reset();
        job.period.reset();
        job.startedBy = {};
        job.startedByJob = 0;
    }
    if (late) {
        job.end.reset();
        job.endsIn = kEndUnknown;
        if (start && *start > range.end) job.start.reset();
    }
    job.cet = job.ready = job.suspended = job.preemptions = std::nullopt;
    return job;
}

std::size_t Jobs::Bytes() const {
    std::size_t bytes = 0;
    for (const auto& jobs : tasks_) bytes += jobs.size() * sizeof(TaskJob);
    for (const auto& jobs : handlers_) bytes += jobs.size() * sizeof(HandlerJob);
    return bytes;
}

}  // namespace kvx::timing
