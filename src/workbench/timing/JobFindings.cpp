#include "workbench/timing/JobFindings.h"

#include <utility>

#include "workbench/timing/Sentence.h"
#include "workbench/timing/Times.h"

namespace kvx::timing {
namespace {

// The period that the task's jobs must keep to; none: it has none.
std::optional<std::int64_t> PeriodOf(const ContextRule* rule, const JobFigures& figures) {
    constexpr std::uint64_t kEnoughJobs = 20;
    if (rule && rule->period) return rule->period;
    const auto& period = figures.Of(Figure::Period);
    if (!period || figures.jobs < kEnoughJobs || *figures.jitter * 5 >= period->median)
        return std::nullopt;
    return period->median;
}

// Stretches of a task that it is ready in without running.
class StretchFinder final : public IWalkObserver {
  public:
    // limits: by context; 0: not looked for.
    StretchFinder(const Model& model, const std::vector<std::int64_t>& limits,
                  std::vector<Finding>& out)
        : model_(model), limits_(limits), out_(out), stretches_(limits.size()) {}

    void OnTask(const Moment& moment, ContextId task, const TaskStatus& before,
                const TaskStatus& now, const Releaser&) override {
        if (limits_[task] == 0) return;
        Stretch& stretch = stretches_[task];
        const bool ready =
            (now.doing == Doing::Ready || now.doing == Doing::Interrupted) && !now.suspended;
        if (before.doing == Doing::Unknown && before.since < moment.time)
            End(task, before.since);
        else if (!ready && now.doing != Doing::Unknown)
            End(task, moment.time);
        if (ready && !stretch.open) stretch = {true, moment.time, now.timeline, now.event};
    }
    void OnEnd(std::int64_t time) override {
        for (ContextId task = 0; task < stretches_.size(); ++task) End(task, time);
    }

  private:
    struct Stretch {
        bool open = false;
        std::int64_t since = 0;
        std::uint32_t timeline = 0;
        EventRef event;
    };
    void End(ContextId task, std::int64_t time) {
        const Stretch stretch = std::exchange(stretches_[task], {});
        const auto length = time - stretch.since;
        if (!stretch.open || length <= limits_[task]) return;
        Finding finding;
        finding.kind = FindingKind::Starvation;
        finding.contexts = {task};
        finding.timeline = stretch.timeline;
        finding.start = stretch.since;
        finding.end = time;
        finding.measured = static_cast<double>(length);
        finding.limit = static_cast<double>(limits_[task]);
        finding.sentence = model_.AllContexts().NameOf(task) + " was ready and did not run for " +
                           TimeText(length, model_.Recording().Clock()) +
                           ", more than ten of its periods.";
        finding.evidence = {stretch.event};
        out_.push_back(std::move(finding));
    }

    const Model& model_;
    const std::vector<std::int64_t>& limits_;
    std::vector<Finding>& out_;
    std::vector<Stretch> stretches_;  // by context
};

}  // namespace

Finding JobFinding(const Model& model, FindingKind kind, ContextId context, const Job& job,
                   std::int64_t measured, std::int64_t limit, const std::string& sentence) {
    Finding finding;
    finding.kind = kind;
    finding.contexts = {context};
    finding.timeline = job.timeline;
    finding.start = job.seen.start;
    finding.end = job.seen.end;
    finding.measured = static_cast<double>(measured);
    finding.limit = static_cast<double>(limit);
    finding.sentence = JobName(model, context, job.number) + " " + sentence + ".";
    finding.evidence = {job.event};
    finding.job = job.number;
    return finding;
}

void FindLateJobs(const Model& model, const Rules& rules, const AllFigures& figures,
                  std::vector<Finding>& out) {
    const auto& clock = model.Recording().Clock();
    for (ContextId id = 0; id < figures.size(); ++id) {
        const auto* rule = rules.Of(id);
        if (!model.AllContexts().Get(id).IsTask() || (rule && rule->deadline)) continue;
        const auto period = PeriodOf(rule, figures[id]);
        const auto& rt = figures[id].Of(Figure::Rt);
        if (!period || !rt || rt->max <= *period) continue;
        for (std::size_t i = 0; i < model.AllJobs().CountOf(id); ++i) {
            const Job job = model.AllJobs().At(id, i);
            if (job.cut || *job.Response() <= *period) continue;
            out.push_back(JobFinding(model, FindingKind::LateJob, id, job, *job.Response(), *period,
                                     "took " + TimeText(*job.Response(), clock) +
                                         ", longer than its period of " +
                                         ExactTimeText(*period, clock)));
        }
    }
}

void FindStarvation(const Model& model, const AllFigures& figures, std::vector<Finding>& out) {
    std::vector<std::int64_t> limits(figures.size());
    bool any = false;
    for (ContextId id = 0; id < figures.size(); ++id) {
        const auto& period = figures[id].Of(Figure::Period);
        if (!period || !model.AllContexts().Get(id).IsTask()) continue;
        for (std::size_t i = 0; i < model.AllJobs().CountOf(id) && limits[id] == 0; ++i)
            if (model.AllJobs().ReadyOf(id, i) > 10 * period->median)
                limits[id] = 10 * period->median;
        any |= limits[id] > 0;
    }
    if (!any) return;
    StretchFinder finder(model, limits, out);
    Walk walk = model.NewWalk();
    walk.Add(finder);
    walk.Run();
}

}  // namespace kvx::timing
