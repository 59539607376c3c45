#include "workbench/timing/JobFigures.h"

#include <algorithm>

namespace kvx::timing {

std::optional<std::int64_t> FigureOf(const Job& job, Figure figure) {
    switch (figure) {
        case Figure::Period:
            return job.period;
        case Figure::Ipt:
            return job.Pending();
        case Figure::Cet:
            return job.cet;
        case Figure::Get:
            return job.Gross();
        case Figure::Rt:
            return job.Response();
        case Figure::Blocked:
            return job.Blocked();
        case Figure::Preemptions:
            return job.preemptions;
    }
    return std::nullopt;
}

JobFigures FiguresOf(const Model& model, const Selection& selection, ContextId context) {
    JobFigures result;
    std::vector<std::int64_t> values[kFigures];
    std::int64_t most[kFigures] = {};
    for (std::size_t i = 0; i < model.AllJobs().CountOf(context); ++i) {
        const auto job = model.JobIn(selection, context, i);
        if (!job) continue;
        ++result.jobs;
        result.nesting = std::max(result.nesting, job->depth);
        if (job->cut) {
            ++result.cutJobs;
            continue;
        }
        for (std::size_t f = 0; f < kFigures; ++f) {
            const auto value = FigureOf(*job, static_cast<Figure>(f));
            if (!value) continue;
            if (!result.worst[f] || *value > most[f]) {
                result.worst[f] = i;
                most[f] = *value;
            }
            values[f].push_back(*value);
        }
    }
    for (std::size_t f = 0; f < kFigures; ++f) result.figures[f] = StatisticsOf(values[f]);
    if (const auto& period = result.Of(Figure::Period)) result.jitter = period->max - period->min;
    return result;
}

}  // namespace kvx::timing
