#include "workbench/timing/Statistics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace kvx::timing {
namespace {

// The nearest rank as one reads it off a sorted list.
std::int64_t ByRank(std::vector<std::int64_t> values, std::size_t percent) {
    std::ranges::sort(values);
    std::size_t rank = 1;
    while (rank * 100 < percent * values.size()) ++rank;
    return values[rank - 1];
}

TEST(Statistics, PercentilesAreOfNearestRank) {
    std::mt19937 random(7);
    for (std::size_t count : {1u, 2u, 3u, 9u, 10u, 11u, 99u, 100u, 101u, 1000u}) {
        std::vector<std::int64_t> values;
        for (std::size_t i = 0; i < count; ++i)
            values.push_back(static_cast<std::int64_t>(random() % 50) - 20);
        const auto kept = values;
        const auto statistics = StatisticsOf(values);
        ASSERT_TRUE(statistics);
        EXPECT_EQ(statistics->median, ByRank(kept, 50)) << count;
        EXPECT_EQ(statistics->p90, ByRank(kept, 90)) << count;
        EXPECT_EQ(statistics->p99, ByRank(kept, 99)) << count;
        std::ranges::sort(values);
        EXPECT_EQ(Percentile(values, 90), statistics->p90);
        EXPECT_EQ(statistics->min, std::ranges::min(kept));
        EXPECT_EQ(statistics->max, std::ranges::max(kept));
    }
    std::vector<std::int64_t> none;
    EXPECT_FALSE(StatisticsOf(none));
    std::vector<std::int64_t> two = {1, 2};
    EXPECT_EQ(StatisticsOf(two)->avg, 1.5);
}

}  // namespace
}  // namespace kvx::timing
