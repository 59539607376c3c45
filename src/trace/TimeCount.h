#pragma once
// Times are held as doubles and handed to the service as whole counts, truncated toward zero.

#include <cstdint>
#include <limits>

namespace kvx {

// Saturates at the ends of the range; not-a-number gives 0.
inline std::int64_t ToCount(double t) {
    constexpr double kLimit = 9223372036854775808.0;
    if (t >= kLimit) return std::numeric_limits<std::int64_t>::max();
    if (t <= -kLimit) return std::numeric_limits<std::int64_t>::min();
    return t == t ? static_cast<std::int64_t>(t) : 0;
}

}  // namespace kvx
