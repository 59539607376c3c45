#include "workbench/exports/ReadyAfter.h"

#include <algorithm>

#include "host/OSTraceService.h"
#include "host/TraceCodes.h"

namespace kvx::exports {

using service::EventStore;

bool IsReadyAfter(const service::DecodedRecording& decoded, const service::Timeline& timeline,
                  std::uint32_t dispatch) {
    constexpr std::uint32_t kLookedAt = 64;
    constexpr auto kReady = host::Code(host::StateCode::Ready);
    const auto& key = timeline.contexts.Get(timeline.events.Context(dispatch)).key;
    const auto record = timeline.events.RecordOf(dispatch);
    const auto time = timeline.events.Time(dispatch);
    for (const auto& other : decoded.Timelines()) {
        const EventStore& events = other->events;
        const bool here = other.get() == &timeline;
        auto e = here ? dispatch + 1 : events.CountUntil(time - 1);
        while (!here && e < events.Count() && events.Time(e) == time && events.RecordOf(e) < record)
            ++e;
        for (const auto last = e + kLookedAt;
             e < std::min(last, events.Count()) && events.Time(e) == time; ++e)
            if (events.Kind(e) == kEventState && events.Code(e) == kReady &&
                events.RecordOf(e) == record && other->contexts.Get(events.Next(e)).key == key)
                return true;
    }
    return false;
}

}  // namespace kvx::exports
