#pragma once
// The coarse search of times in ascending order: halving down to a span of 100, then a scan.

#include <cstdint>

namespace kvx {

inline constexpr std::uint32_t kNearSpan = 100;

// A position at most 100 before the first at or after t; 0 when there is none at all. time(i) is
// the time of position i.
template <class Time>
std::uint32_t FindNear(std::uint32_t count, double t, Time time) {
    if (count == 0) return 0;
    std::uint32_t low = 0;
    std::uint32_t high = count - 1;
    while (high - low >= kNearSpan) {
        const std::uint32_t middle = low + (high - low) / 2;
        const double middleTime = time(middle);
        if (middleTime == t) return middle;
        (time(low) <= t && t < middleTime ? high : low) = middle;
    }
    return low;
}

// The first position in from..end - 1 whose time is at or after t; end when there is none.
template <class Time>
std::uint32_t ScanFrom(std::uint32_t from, std::uint32_t end, double t, Time time) {
    while (from < end && time(from) < t) ++from;
    return from;
}

// The first i in low..high - 1 for which holds(i) is true, high when there is none; where it holds
// it also holds for all that follow.
template <class Index, class Holds>
Index FirstWhere(Index low, Index high, Holds holds) {
    while (low < high) {
        const Index middle = low + (high - low) / 2;
        if (holds(middle))
            high = middle;
        else
            low = middle + 1;
    }
    return low;
}

}  // namespace kvx
