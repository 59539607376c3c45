#pragma once
// Ticks of a counter as nanoseconds, where its frequency is known; else they stay counts.

#include <cstdint>

#include "workbench/service/TraceClock.h"

namespace kvx::formats {

class TickClock {
  public:
    // frequency: ticks a second; 0: not known.
    explicit TickClock(std::uint64_t frequency = 0) : frequency_(frequency) {}

    service::TraceClock Clock() const {
        return service::TraceClock(frequency_ ? service::TimeUnit::Nanoseconds
                                              : service::TimeUnit::Counts);
    }
    // Each by itself, so that nothing adds up: parts of a nanosecond are cut off.
    std::int64_t Time(std::uint64_t ticks) const {
        if (frequency_ == 0) return Held(ticks);
        if (ticks <= kMost / 1000000000)
            return static_cast<std::int64_t>(ticks * 1000000000 / frequency_);
        __extension__ using Wide = unsigned __int128;
        const Wide time = Wide{ticks} * 1000000000 / frequency_;
        return time > kMost ? static_cast<std::int64_t>(kMost) : static_cast<std::int64_t>(time);
    }

  private:
    static constexpr std::uint64_t kMost = 0x7FFFFFFFFFFFFFFFu;
    static std::int64_t Held(std::uint64_t ticks) {
        return static_cast<std::int64_t>(ticks > kMost ? kMost : ticks);
    }

    std::uint64_t frequency_;
};

}  // namespace kvx::formats
