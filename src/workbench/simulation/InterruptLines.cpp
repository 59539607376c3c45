#include "workbench/simulation/InterruptLines.h"

#include <algorithm>
#include <stdexcept>

namespace kvx::simulation {

InterruptLine& InterruptLines::Line(std::int32_t number) {
    const auto at = std::ranges::find(lines_, number,
                                      [](const InterruptLine& line) { return line.handler.id; });
    if (at == lines_.end()) throw std::out_of_range("no such interrupt");
    return *at;
}

Time InterruptLines::NextDue(std::int32_t level) const {
    Time next = kNever;
    for (const auto& line : lines_)
        if (line.enabled && line.level > level) next = std::min(next, line.due);
    return next;
}

const InterruptLine* InterruptLines::Take(Time now, std::int32_t level) {
    InterruptLine* taken = nullptr;
    for (auto& line : lines_)
        if (line.enabled && line.due <= now && line.level > (taken ? taken->level : level))
            taken = &line;
    if (taken) taken->due = taken->period ? taken->due + taken->period : kNever;
    return taken;
}

}  // namespace kvx::simulation
