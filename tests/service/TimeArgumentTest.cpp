#include "workbench/service/TimeArgument.h"

#include <gtest/gtest.h>

namespace kvx::service {
namespace {

std::string Outcome(std::string_view text, TimeUnit unit) {
    const auto time = ParseTime(text, TraceClock(unit));
    return time ? std::to_string(*time) : "refused";
}

TEST(TimeArgument, BareWholeNumbersAreCountsWhateverTheClock) {
    for (const TimeUnit unit : {TimeUnit::Counts, TimeUnit::Microseconds}) {
        EXPECT_EQ(Outcome("0", unit), "0");
        EXPECT_EQ(Outcome("1926193", unit), "1926193");
        EXPECT_EQ(Outcome("-7", unit), "-7");
        EXPECT_EQ(Outcome("9223372036854775807", unit), "9223372036854775807");
        EXPECT_EQ(Outcome("9223372036854775808", unit), "refused");
        EXPECT_EQ(Outcome("1.5", unit), "refused") << "a count is whole";
    }
}

TEST(TimeArgument, UnitsNeedAClock) {
    EXPECT_EQ(Outcome("1.5ms", TimeUnit::Microseconds), "1500");
    EXPECT_EQ(Outcome("1.5ms", TimeUnit::Nanoseconds), "1500000");
    EXPECT_EQ(Outcome("1.5ms", TimeUnit::Milliseconds), "1") << "parts of a count are cut off";
    EXPECT_EQ(Outcome("-1.5ms", TimeUnit::Milliseconds), "-1");
    EXPECT_EQ(Outcome("1.5ms", TimeUnit::Counts), "refused");
    EXPECT_EQ(Outcome("3s", TimeUnit::Microseconds), "3000000");
    EXPECT_EQ(Outcome("0.000000001s", TimeUnit::Nanoseconds), "1");
    EXPECT_EQ(Outcome("0.0000000019s", TimeUnit::Nanoseconds), "1");
    EXPECT_EQ(Outcome("2min", TimeUnit::Milliseconds), "120000");
    EXPECT_EQ(Outcome("0.5h", TimeUnit::Milliseconds), "1800000");
    EXPECT_EQ(Outcome("12ns", TimeUnit::Microseconds), "0");
    EXPECT_EQ(Outcome("9223372036s", TimeUnit::Nanoseconds), "9223372036000000000");
    EXPECT_EQ(Outcome("9223372037s", TimeUnit::Nanoseconds), "refused");
    EXPECT_EQ(Outcome("9223372036854775807h", TimeUnit::Nanoseconds), "refused");
}

TEST(TimeArgument, WhatIsNoTimeIsRefusedByName) {
    for (const char* text : {"", "-", "--5", "ms", ".5ms", "1.ms", "1..5ms", "1e3", "1.5 ms",
                             "1.5ks", "0x10", "1ms2", " 5", "5 ", "+5", "1,5ms"}) {
        const auto time = ParseTime(text, TraceClock(TimeUnit::Microseconds));
        ASSERT_FALSE(time) << text;
        EXPECT_NE(time.GetError().message.find("'" + std::string(text) + "'"), std::string::npos);
    }
}

}  // namespace
}  // namespace kvx::service
