#include "workbench/timing/Statistics.h"

#include <algorithm>
#include <numeric>

namespace kvx::timing {

namespace {

std::size_t RankOf(std::size_t count, unsigned percent) {
    return std::max<std::size_t>((count * percent + 99) / 100, 1) - 1;
}

// Puts the value of that rank into its place, all less before it: from the place `from` on, which
// an earlier call of a lower rank has left.
std::int64_t Select(std::vector<std::int64_t>& values, unsigned percent, std::size_t& from) {
    const auto rank = RankOf(values.size(), percent);
    const auto at = values.begin() + static_cast<std::ptrdiff_t>(rank);
    std::nth_element(values.begin() + static_cast<std::ptrdiff_t>(from), at, values.end());
    from = rank;
    return *at;
}

}  // namespace

std::optional<Statistics> StatisticsOf(std::vector<std::int64_t>& values) {
    if (values.empty()) return std::nullopt;
    const auto sum = std::accumulate(values.begin(), values.end(), 0.0L);
    Statistics statistics;
    statistics.avg = static_cast<double>(sum / static_cast<long double>(values.size()));
    const auto [min, max] = std::ranges::minmax(values);
    statistics.min = min;
    statistics.max = max;
    std::size_t from = 0;
    statistics.median = Select(values, 50, from);
    statistics.p90 = Select(values, 90, from);
    statistics.p99 = Select(values, 99, from);
    return statistics;
}

std::int64_t Percentile(const std::vector<std::int64_t>& sorted, unsigned percent) {
    return sorted[RankOf(sorted.size(), percent)];
}

}  // namespace kvx::timing
