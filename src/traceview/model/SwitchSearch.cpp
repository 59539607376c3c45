#include "traceview/model/SwitchSearch.h"

namespace kvx {

SwitchSearch::SwitchSearch(const host::OSTraceColumns& columns, const ChartGeometry& geometry,
                           const CContextMng& contexts)
    : columns_(columns), dispatches_(columns.dispatches), reduced_(geometry, contexts) {
    if (!columns.dispatchesTo) return;
    for (std::uint32_t c = 0; c < columns.contextCount; ++c)
        visits_.push_back({EventCursor(columns.dispatchesTo[c]), 0, 0});
}

int SwitchSearch::Line(std::uint32_t context) const {
    return static_cast<int>(columns_.lineOfContext[context]);
}

void SwitchSearch::Column(int x, const PixelColumns& pixels, std::uint32_t from,
                          std::vector<SwitchLine>& out) {
    const std::uint32_t first = dispatches_.AdvanceTo(std::max(pixels.First(x), from));
    const std::uint32_t beyond = dispatches_.AdvanceTo(std::max(pixels.Beyond(x), from));
    if (first == beyond) return;
    reduced_.Begin(x);
    const bool few = beyond - first <= 2 * columns_.contextCount;
    if (few || visits_.empty())
        Walk(first, beyond - 1);
    else
        Jump(first, beyond - 1);
    reduced_.Finish(out);
}

void SwitchSearch::Add(std::uint32_t position) {
    const std::uint32_t event = Event(position);
    reduced_.Add(Line(columns_.context[event]), Line(columns_.next[event]), event);
}

void SwitchSearch::Walk(std::uint32_t first, std::uint32_t last) {
    for (std::uint32_t position = last + 1; position-- > first;) Add(position);
}

void SwitchSearch::FindVisits(std::uint32_t first, std::uint32_t last) {
    initial_ = columns_.context[Event(first)];
    initialVisit_ = Event(first);
    for (Visits& visits : visits_) {
        visits.begin = visits.cursor.AdvanceTo(Event(first));
        visits.end = visits.cursor.AdvanceTo(Event(last) + 1);
    }
}

// The context's last visit by a dispatch below the event.
std::uint64_t SwitchSearch::LastVisit(std::uint32_t context, std::uint32_t before) {
    Visits& visits = visits_[context];
    const std::uint32_t* const events = visits.cursor.List().events;
    if (visits.end > visits.begin && events[visits.end - 1] >= before) {
        const auto at = std::lower_bound(events + visits.begin, events + visits.end, before);
        visits.end = static_cast<std::uint32_t>(at - events);
    }
    if (visits.end > visits.begin) return std::uint64_t{events[visits.end - 1]} + 1;
    return context == initial_ ? initialVisit_ : kNever;
}

// Position of the dispatch that ends the visit.
std::uint32_t SwitchSearch::DispatchAfter(std::uint64_t visit, std::uint32_t first) const {
    if (visit == initialVisit_) return first;
    const std::uint32_t* const events = columns_.dispatches.events;
    const auto at = std::lower_bound(events + first, events + columns_.dispatches.count, visit);
    return static_cast<std::uint32_t>(at - events);
}

void SwitchSearch::Jump(std::uint32_t first, std::uint32_t last) {
    FindVisits(first, last);
    std::uint32_t position = last;
    while (true) {
        Add(position);
        if (position == first) return;
        const std::uint32_t event = Event(position);
        const Interval* const settled = reduced_.Settled(Line(columns_.context[event]));
        if (!settled) {
            --position;
            continue;
        }
        std::uint64_t latest = kNever;
        for (std::uint32_t context = 0; context < columns_.contextCount; ++context) {
            if (reduced_.IsSettledBy(*settled, Line(context))) continue;
            latest = std::max(latest, LastVisit(context, event));
        }
        if (latest == kNever) return;
        position = DispatchAfter(latest, first);
    }
}

}  // namespace kvx
