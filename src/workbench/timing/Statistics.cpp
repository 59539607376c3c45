#include "workbench/timing/Statistics.h"

#include <algorithm>
#include <numeric>

namespace kvx::timing {

std::optional<Statistics> StatisticsOf(std::vector<std::int64_t>& values) {
    if (values.empty()) return std::nullopt;
    std::ranges::sort(values);
    const auto sum = std::accumulate(values.begin(), values.end(), 0.0L);
    Statistics statistics;
    statistics.min = values.front();
    statistics.avg = static_cast<double>(sum / static_cast<long double>(values.size()));
    statistics.median = Percentile(values, 50);
    statistics.p90 = Percentile(values, 90);
    statistics.p99 = Percentile(values, 99);
    statistics.max = values.back();
    return statistics;
}

std::int64_t Percentile(const std::vector<std::int64_t>& sorted, unsigned percent) {
    const auto rank = (sorted.size() * percent + 99) / 100;
    return sorted[std::max<std::size_t>(rank, 1) - 1];
}

}  // namespace kvx::timing
