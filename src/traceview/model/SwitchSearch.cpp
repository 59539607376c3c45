#include "traceview/model/SwitchSearch.h"

#include <algorithm>

#include "traceview/model/ListSearch.h"

namespace kvx {

int SwitchSearch::Line(std::uint32_t context) const {
    return static_cast<int>(columns_.lineOfContext[context]);
}

void SwitchSearch::Column(int x, std::uint32_t first, std::uint32_t beyond, ChartItems& out) {
    if (first >= beyond) return;
    column_ = static_cast<std::size_t>(x - left_);
    first_ = first;
    beyond_ = beyond;
    reduced_.Begin(x);
    std::optional<std::uint32_t> position = beyond_ - 1;
    for (std::uint32_t steps = 0; position; ++steps) {
        Add(*position);
        const bool walk = !columns_.dispatchesTo || steps < columns_.contextCount;
        if (*position == first_)
            position.reset();
        else
            position = walk ? *position - 1 : Before(*position);
    }
    reduced_.Finish(out);
}

void SwitchSearch::Add(std::uint32_t position) {
    const std::uint32_t event = Event(position);
    reduced_.Add(Line(columns_.context[event]), Line(columns_.next[event]), event);
}

// The last dispatch before the position that may leave a mark: it ends a visit of a line that is
// not settled together with the one that ran until the position.
std::optional<std::uint32_t> SwitchSearch::Before(std::uint32_t position) {
    const std::uint32_t event = Event(position);
    const Interval* const settled = reduced_.Settled(Line(columns_.context[event]));
    if (!settled) return position - 1;
    Visit latest = 0;
    for (std::uint32_t context = 0; context < columns_.contextCount; ++context) {
        if (!reduced_.IsSettledBy(*settled, Line(context)))
            latest = std::max(latest, LastVisit(context, event));
    }
    if (latest == 0) return std::nullopt;
    return DispatchAfter(latest);
}

// The context's last visit that began with a dispatch below the event.
SwitchSearch::Visit SwitchSearch::LastVisit(std::uint32_t context, std::uint32_t before) {
    const std::vector<std::uint32_t>& counts = CountsOf(context);
    const std::uint32_t* const events = columns_.dispatchesTo[context].events;
    const std::uint32_t* const begin = events + counts[column_];
    const std::uint32_t* const end = std::lower_bound(begin, events + counts[column_ + 1], before);
    const std::uint32_t first = Event(first_);
    if (end > begin && end[-1] >= first) return Visit{end[-1]} + 1;
    return columns_.context[first] == context ? first : 0;
}

const std::vector<std::uint32_t>& SwitchSearch::CountsOf(std::uint32_t context) {
    if (counts_.empty()) counts_.resize(columns_.contextCount);
    std::vector<std::uint32_t>& counts = counts_[context];
    if (counts.empty())
        counts = CountsBefore(columns_.dispatchesTo, columns_.dispatchesToLevels, context,
                              pixels_.Bounds());
    return counts;
}

// Position of the dispatch that ends the visit.
std::uint32_t SwitchSearch::DispatchAfter(Visit visit) const {
    const std::uint32_t* const events = columns_.dispatches.events;
    return static_cast<std::uint32_t>(std::lower_bound(events + first_, events + beyond_, visit) -
                                      events);
}

}  // namespace kvx
