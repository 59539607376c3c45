#include "workbench/service/EventMerge.h"

#include <algorithm>

namespace kvx::service {

EventMerge::EventMerge(const std::vector<const Timeline*>& timelines, std::int64_t from) {
    const bool all = from == std::numeric_limits<std::int64_t>::min();
    for (const auto* timeline : timelines) {
        const EventStore& events = timeline->events;
        Place place{&events, all ? 0 : events.CountUntil(from - 1), events.Count()};
        Look(place);
        places_.push_back(place);
    }
}

// A wait names the record of the call that waits, which is an earlier one.
void EventMerge::Look(Place& place) const {
    if (place.next == place.count) return;
    place.time = place.events->Time(place.next);
    const auto by = place.events->RecordOf(place.next);
    if (by != kNoRecord) place.record = std::max(place.record, by);
}

std::optional<EventMerge::Event> EventMerge::Next() {
    Place* first = nullptr;
    for (Place& place : places_) {
        if (place.next == place.count) continue;
        const bool earlier = !first || place.time < first->time ||
                             (place.time == first->time && place.record < first->record);
        if (earlier) first = &place;
    }
    if (!first) return std::nullopt;
    const Event event{static_cast<std::uint32_t>(first - places_.data()), first->next, first->time,
                      first->record};
    ++first->next;
    Look(*first);
    return event;
}

}  // namespace kvx::service
