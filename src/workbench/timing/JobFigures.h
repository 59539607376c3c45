#pragma once
// The figures of a context's jobs, as values and as statistics.

#include <optional>
#include <vector>

#include "workbench/timing/Model.h"
#include "workbench/timing/Statistics.h"

namespace kvx::timing {

enum class Figure : std::uint8_t { Period, Ipt, Cet, Get, Rt, Blocked, Preemptions };
inline constexpr std::size_t kFigures = 7;
// None: the job has none, or the recording does not tell.
std::optional<std::int64_t> FigureOf(const Job& job, Figure figure);

// Of the complete jobs in a selection.
struct JobFigures {
    std::uint64_t jobs = 0;  // all of them, those that are cut included
    std::uint64_t cutJobs = 0;
    std::optional<Statistics> figures[kFigures];
    std::optional<std::size_t> worst[kFigures];  // index of the job with the maximum
    std::optional<std::int64_t> jitter;          // of the periods
    std::size_t nesting = 0;                     // handlers: how many others one interrupted

    const std::optional<Statistics>& Of(Figure figure) const {
        return figures[static_cast<std::size_t>(figure)];
    }
};
JobFigures FiguresOf(const Model& model, const Selection& selection, ContextId context);

}  // namespace kvx::timing
