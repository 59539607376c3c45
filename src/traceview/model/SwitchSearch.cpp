#include "traceview/model/SwitchSearch.h"

namespace kvx {

SwitchSearch::SwitchSearch(const host::OSTraceColumns& columns, const ChartGeometry& geometry,
                           const CContextMng& contexts, std::uint32_t from)
    : columns_(columns),
      from_(from),
      dispatches_(columns.dispatches),
      reduced_(geometry, contexts) {
    if (!columns.dispatchesTo) return;
    for (std::uint32_t c = 0; c < columns.contextCount; ++c)
        visits_.push_back({EventCursor(columns.dispatchesTo[c]), 0, 0, 0});
}

int SwitchSearch::Line(std::uint32_t context) const {
    return static_cast<int>(columns_.lineOfContext[context]);
}

void SwitchSearch::Column(int x, const PixelColumns& pixels, std::vector<SwitchLine>& out) {
    first_ = dispatches_.AdvanceTo(std::max(pixels.First(x), from_));
    beyond_ = dispatches_.AdvanceTo(std::max(pixels.Beyond(x), from_));
    if (first_ == beyond_) return;
    reduced_.Begin(x);
    std::optional<std::uint32_t> position = beyond_ - 1;
    for (std::uint32_t steps = 0; position; ++steps) {
        Add(*position);
        const bool walk = visits_.empty() || steps < columns_.contextCount;
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
    Visits& visits = visits_[context];
    const std::uint32_t first = Event(first_);
    if (visits.column != first) {
        visits.column = first;
        visits.begin = visits.cursor.AdvanceTo(first);
        visits.end = visits.cursor.AdvanceTo(before);
    }
    const std::uint32_t* const events = visits.cursor.List().events;
    const auto end = std::lower_bound(events + visits.begin, events + visits.end, before);
    visits.end = static_cast<std::uint32_t>(end - events);
    if (visits.end > visits.begin) return Visit{events[visits.end - 1]} + 1;
    return columns_.context[first] == context ? first : 0;
}

// Position of the dispatch that ends the visit.
std::uint32_t SwitchSearch::DispatchAfter(Visit visit) const {
    const std::uint32_t* const events = columns_.dispatches.events;
    return static_cast<std::uint32_t>(std::lower_bound(events + first_, events + beyond_, visit) -
                                      events);
}

}  // namespace kvx
