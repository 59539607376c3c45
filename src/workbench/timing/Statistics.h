#pragma once
// The usual figures of a set of values.

#include <cstdint>
#include <optional>
#include <vector>

namespace kvx::timing {

struct Statistics {
    std::int64_t min = 0;
    double avg = 0;
    std::int64_t median = 0;
    std::int64_t p90 = 0;
    std::int64_t p99 = 0;
    std::int64_t max = 0;
};

// A percentile is the smallest value that at least so many per cent do not exceed (nearest rank).
// Changes the order of the values. None for no values.
std::optional<Statistics> StatisticsOf(std::vector<std::int64_t>& values);

// The same of sorted values, which are not empty.
std::int64_t Percentile(const std::vector<std::int64_t>& sorted, unsigned percent);

}  // namespace kvx::timing
