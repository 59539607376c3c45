#pragma once
// The events of several processors in order of time; where times are equal, in that of the records
// that gave them, as far as that is known, and of the processors.

#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "workbench/service/Timeline.h"

namespace kvx::service {

class EventMerge {
  public:
    // Borrowed; none of them gets further events. from: earlier events are passed over.
    explicit EventMerge(const std::vector<const Timeline*>& timelines,
                        std::int64_t from = std::numeric_limits<std::int64_t>::min());

    struct Event {
        std::uint32_t timeline = 0;  // which of those given
        std::uint32_t number = 0;
        std::int64_t time = 0;
        std::uint32_t record = 0;  // no later one has given it
    };
    // None: that was all.
    std::optional<Event> Next();

  private:
    struct Place {
        const EventStore* events = nullptr;
        std::uint32_t next = 0;
        std::uint32_t count = 0;
        std::int64_t time = 0;     // of the event that comes next
        std::uint32_t record = 0;  // the latest one up to it
    };
    void Look(Place& place) const;

    std::vector<Place> places_;
};

}  // namespace kvx::service
