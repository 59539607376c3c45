#include "analyze/model/Analysis.h"

#include <bit>

namespace kvx {

// Doubles are ordered as their bits are, but for the sign.
std::int64_t SortNumberOf(double value) {
    const auto bits = std::bit_cast<std::int64_t>(value + 0.0);
    return bits < 0 ? INT64_MIN - bits : bits;
}

}  // namespace kvx
