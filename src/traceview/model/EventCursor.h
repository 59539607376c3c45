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
    // many events lie before the bound. Bounds tend to be evenly spaced: the search begins where
    // another step like the last one leads.
    std::uint32_t AdvanceTo(std::uint32_t bound) {
        const std::uint32_t guess = position_ + std::min(stride_, list_.count - position_);
        std::uint32_t low = position_;
        std::uint32_t high = guess;
        std::uint32_t step = stride_ / 8 + 1;
        if (IsBefore(guess, bound)) {
            for (low = guess; IsBefore(low + step, bound); step *= 2) low += step;
            high = std::min(low + step, list_.count);
        } else {
            for (; high - low > step && !IsBefore(high - step, bound); step *= 2) high -= step;
            low = high - low > step ? high - step : low;
        }
        const std::uint32_t* const events = list_.events;
        const auto at = std::lower_bound(events + low, events + high, bound);
        stride_ = static_cast<std::uint32_t>(at - events) - position_;
        position_ += stride_;
        return position_;
    }
    const host::EventList& List() const { return list_; }

  private:
    // All of the first count events lie before the bound.
    bool IsBefore(std::uint32_t count, std::uint32_t bound) const {
        return count == 0 || (count <= list_.count && list_.events[count - 1] < bound);
    }

    host::EventList list_;
    std::uint32_t position_ = 0;
    std::uint32_t stride_ = 0;
};

}  // namespace kvx
