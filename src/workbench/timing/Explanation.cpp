#include "workbench/timing/Explanation.h"

#include <algorithm>

#include "workbench/timing/Chain.h"

namespace kvx::timing {

std::string_view PartKindName(PartKind kind) {
    constexpr std::string_view kNames[] = {"runs",    "waits_to_start", "preempted", "interrupted",
                                           "blocked", "suspended",      "unknown"};
    return kNames[static_cast<std::size_t>(kind)];
}

bool Part::IsLike(const Part& other) const {
    return kind == other.kind && by == other.by && cause == other.cause && object == other.object &&
           chain == other.chain && deadlock == other.deadlock && inversion == other.inversion;
}

namespace {

// Notes what a job does from one change to the next.
class Explainer final : public IWalkObserver {
  public:
    Explainer(const Walk& walk, Explanation& out)
        : walk_(walk),
          priorities_(walk.From()),
          isTask_(walk.From().contexts.Get(out.context).IsTask()),
          out_(out) {}

    void OnPasses(std::int64_t from, std::int64_t to) override {
        const Span& seen = out_.job.seen;
        if (to <= seen.start || from >= seen.end) return;
        priorities_.MoveTo(walk_.Now().record);
        Part part = isTask_ ? TaskPart(from) : HandlerPart();
        part.start = std::max(from, seen.start);
        part.end = std::min(to, seen.end);
        auto& parts = out_.parts;
        if (!parts.empty() && parts.back().IsLike(part))
            parts.back().end = part.end;
        else
            parts.push_back(std::move(part));
    }

  private:
    Part TaskPart(std::int64_t time) const {
        const TaskStatus& status = walk_.StatusOf(out_.context);
        Part part;
        switch (status.doing) {
            case Doing::Runs:
                part.kind = PartKind::Runs;
                return part;
            case Doing::Interrupted:
            case Doing::Ready:
                if (status.suspended)
                    part.kind = PartKind::Suspended;
                else
                    Describe(part, status, time);
                return part;
            case Doing::Waits:
                part.kind = status.suspended ? PartKind::Suspended : PartKind::Blocked;
                part.cause = status.wait.cause;
                part.object = status.wait.object;
                Follow(part);
                return part;
            case Doing::Dormant:
            case Doing::Unknown:
                return part;
        }
        return part;
    }

    // Ready: by what it is kept.
    void Describe(Part& part, const TaskStatus& status, std::int64_t time) const {
        const auto by = walk_.RunnerOn(status.timeline);
        if (by != out_.context) part.by = by;
        const bool handler = part.by != kNobody && walk_.From().contexts.Get(by).IsHandler();
        const auto& start = out_.job.start;
        if (out_.job.activation && (!start || time < *start))
            part.kind = PartKind::WaitsToStart;
        else
            part.kind = handler ? PartKind::Interrupted : PartKind::Preempted;
    }

    void Follow(Part& part) const {
        auto chain = ChainOf(walk_, priorities_, out_.context);
        part.chain = std::move(chain.links);
        part.deadlock = chain.deadlock;
        part.inversion = chain.inversion;
        if (!part.chain.empty()) part.by = part.chain.back().by;
    }

    Part HandlerPart() const {
        Part part;
        const auto current = walk_.Current(out_.job.timeline);
        part.kind = current == out_.context ? PartKind::Runs : PartKind::Interrupted;
        if (part.kind == PartKind::Interrupted) part.by = current;
        return part;
    }

    const Walk& walk_;
    PriorityTable priorities_;
    const bool isTask_;
    Explanation& out_;
};

}  // namespace

Explanation Explain(const Model& model, ContextId context, std::size_t index) {
    Explanation explanation{context, model.AllJobs().At(context, index), {}};
    Walk walk = model.WalkNear(explanation.job.seen.start);
    Explainer explainer(walk, explanation);
    walk.Add(explainer);
    walk.Run(explanation.job.seen.end);
    return explanation;
}

std::optional<JobRef> JobAt(const Model& model, std::int64_t time,
                            std::optional<std::uint32_t> timeline,
                            const std::vector<ContextId>& among) {
    const auto indexAt = [&](ContextId context) -> std::optional<JobRef> {
        // Jobs of a task are in order of time and do not overlap.
        for (auto index = model.AllJobs().CountOf(context); index-- > 0;) {
            const Job job = model.AllJobs().At(context, index);
            const bool here = !timeline || job.timeline == *timeline;
            if (here && job.seen.start <= time && time <= job.seen.end)
                return JobRef{context, index};
        }
        return std::nullopt;
    };
    for (const auto context : among)
        if (const auto found = indexAt(context)) return found;
    if (!among.empty()) return std::nullopt;
    const auto& timelines = model.Decoded().Timelines();
    for (std::uint32_t i = 0; i < timelines.size(); ++i) {
        if (timeline.value_or(i) != i) continue;
        const auto& events = timelines[i]->events;
        const auto before = events.Dispatches(events.CountUntil(time));
        const auto all = events.Dispatches(events.Count());
        if (all.empty()) continue;
        const auto local =
            before.empty() ? events.Context(all.front()) : events.Next(before.back());
        const auto context = model.AllContexts().Of(i, local);
        if (const auto found = indexAt(context)) return found;
    }
    return std::nullopt;
}

std::vector<JobRef> WorstJobs(const Model& model, const std::vector<ContextId>& among,
                              std::optional<std::uint32_t> timeline, std::size_t count) {
    std::vector<std::pair<std::int64_t, JobRef>> jobs;
    for (const auto context : among)
        for (std::size_t i = 0; i < model.AllJobs().CountOf(context); ++i) {
            const Job job = model.AllJobs().At(context, i);
            if (!job.cut && timeline.value_or(job.timeline) == job.timeline)
                jobs.push_back({*job.Response(), {context, i}});
        }
    std::ranges::stable_sort(jobs, std::ranges::greater(),
                             [](const auto& job) { return job.first; });
    std::vector<JobRef> worst;
    for (std::size_t i = 0; i < std::min(count, jobs.size()); ++i) worst.push_back(jobs[i].second);
    return worst;
}

}  // namespace kvx::timing
