#pragma once
// A position in an ascending list of event indexes that only moves forwards.

#include <algorithm>

#include "host/OSTraceColumns.h"

namespace kvx {

class EventCursor {
  public:
    EventCursor() = default;
    explicit EventCursor(const host::EventList& list) : list_(list) {}

    // Moves to the first event at or after the bound; the answer is its position, which is also how
    // many events lie before the bound.
    std::uint32_t AdvanceTo(std::uint32_t bound) {
        std::uint32_t step = 1;
        std::uint32_t low = position_;
        while (step < list_.count - low && list_.events[low + step] < bound) {
            low += step;
            step *= 2;
        }
        const std::uint32_t* const begin = list_.events;
        const std::uint32_t* const end =
            begin + std::min<std::uint64_t>(list_.count, std::uint64_t{low} + step);
        position_ = static_cast<std::uint32_t>(std::lower_bound(begin + low, end, bound) - begin);
        return position_;
    }
    std::uint32_t Position() const { return position_; }
    const host::EventList& List() const { return list_; }

  private:
    host::EventList list_;
    std::uint32_t position_ = 0;
};

}  // namespace kvx
