#include "workbench/simulation/Random.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>

namespace kvx::simulation {
namespace {

// The generator's published numbers for this seed are 6457827717110365317, 3203168211198807973 and
// 9817491932198370423: the upper 31 bits of each.
TEST(Random, GivesTheSameNumbersEverywhere) {
    Random random(1234567);
    constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
    EXPECT_EQ(random.Between(0, kMost), 6457827717110365317u >> 33);
    EXPECT_EQ(random.Between(0, kMost), 3203168211198807973u >> 33);
    EXPECT_EQ(random.Between(0, kMost), 9817491932198370423u >> 33);
}

TEST(Random, KeepsItsBoundsAndReachesThem) {
    Random random(1);
    std::set<std::int32_t> seen;
    for (int i = 0; i < 1000; ++i) seen.insert(random.Between(-2, 3));
    EXPECT_EQ(seen, (std::set<std::int32_t>{-2, -1, 0, 1, 2, 3}));
    EXPECT_EQ(random.Between(7, 7), 7);
    EXPECT_TRUE(random.Once(1));
    int hits = 0;
    for (int i = 0; i < 12000; ++i) hits += random.Once(12) ? 1 : 0;
    EXPECT_NEAR(hits, 1000, 150);
}

}  // namespace
}  // namespace kvx::simulation
