// The index of a text log against a plain model: all lines, sorted by time where they have one.

#include "workbench/formats/text/LineIndex.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "platform/base/Text.h"
#include "workbench/formats/text/LineReader.h"
#include "workbench/formats/text/TimedLine.h"

namespace kvx::formats {
namespace {

using Lines = std::vector<std::string>;

LineIndex IndexOf(const std::string& text, const LineRules& rules = {}) {
    bool cancelled = false;
    return BuildLineIndex(text, rules, nullptr, cancelled);
}

Lines Read(const LineIndex& index) {
    LineReader reader(index);
    Lines lines;
    for (std::uint32_t i = 0; i < index.records; ++i) lines.emplace_back(reader.Next());
    return lines;
}

// A line without a time keeps its place behind the latest of the lines before it that have one.
Lines SortedByTime(const Lines& lines) {
    struct Keyed {
        std::int64_t time;
        std::string line;
    };
    std::vector<Keyed> keyed;
    std::int64_t latest = std::numeric_limits<std::int64_t>::min();
    for (const auto& line : lines) {
        const auto parsed = ParseTimedLine(line, 10);
        latest = parsed ? std::max(latest, parsed->time) : latest;
        keyed.push_back({parsed ? parsed->time : latest, line});
    }
    std::ranges::stable_sort(keyed, {}, &Keyed::time);
    Lines sorted;
    for (const auto& entry : keyed) sorted.push_back(entry.line);
    return sorted;
}

TEST(LineIndex, EqualsAStableSortOnRandomLogs) {
    std::mt19937 random(1);
    const auto upTo = [&](unsigned n) { return static_cast<unsigned>(random() % (n + 1)); };
    for (int round = 0; round < 400; ++round) {
        const unsigned disorder = upTo(3);
        const unsigned processors = upTo(2);
        const bool feedsWithReturn = upTo(1) != 0;
        std::int64_t time = upTo(2) == 0 ? 0 : upTo(2000000000);
        Lines lines;
        std::string text = upTo(1) ? "\xEF\xBB\xBF" : "";
        const auto count = upTo(round % 10 == 0 ? 3000 : 300);
        for (unsigned i = 0; i < count; ++i) {
            time += upTo(50) * (upTo(40) == 0 ? 100000 : 1);
            std::int64_t shown = time;
            if (disorder > 0 && upTo(20) < disorder) shown -= upTo(upTo(3) == 0 ? 100000000 : 60);
            if (disorder == 3 && upTo(100) == 0) shown += upTo(100000);
            std::string line =
                FormatText("[%lld]", static_cast<long long>(std::max<std::int64_t>(shown, 0)));
            if (processors > 0) line += FormatText(":[%u]:", 1 + upTo(processors + 8));
            line += FormatText(" line %u%s", i, std::string(upTo(90), 'x').c_str());
            if (upTo(60) == 0) line = FormatText("no time %u", i);
            if (upTo(60) == 0) text += feedsWithReturn ? "\r\n" : "\n";
            lines.push_back(line);
            text += line + (feedsWithReturn ? "\r\n" : "\n");
        }
        if (upTo(1) && !lines.empty()) text.resize(text.size() - (feedsWithReturn ? 2 : 1));
        const auto index = IndexOf(text);
        ASSERT_EQ(index.records, lines.size()) << "round " << round;
        ASSERT_EQ(Read(index), SortedByTime(lines)) << "round " << round;
        // Reading from anywhere finds the same lines.
        const auto sorted = SortedByTime(lines);
        for (int probe = 0; probe < 20 && !lines.empty(); ++probe) {
            const auto at = upTo(static_cast<unsigned>(lines.size()) - 1);
            LineReader reader(index);
            reader.Seek(at);
            ASSERT_EQ(reader.Next(), sorted[at]);
            if (at + 1 == lines.size()) continue;
            ASSERT_EQ(reader.Next(), sorted[at + 1]);
        }
    }
}

TEST(LineIndex, KnowsTimesAndProcessors) {
    const auto index =
        IndexOf("[5]:[2]: a\n[99]:[12]: b\n[100]:[1]: c\n[7]:[2]: d\n[8]: e\n[x]: f\n");
    EXPECT_EQ(index.records, 6u);
    EXPECT_EQ(index.timedRecords, 5u);
    EXPECT_EQ(index.firstTime, 5);
    EXPECT_EQ(index.lastTime, 100);
    EXPECT_THAT(index.processors, testing::ElementsAre(1, 2, 12));
    EXPECT_EQ(index.stepsBack, 0u);
}

TEST(LineIndex, CountsStepsBackOfOneProcessorOnly) {
    EXPECT_EQ(IndexOf("[5] a\n[4] b\n[4] c\n[3] d\n[9] e\n").stepsBack, 2u);
    EXPECT_EQ(IndexOf("[5]:[1]: a\n[4]:[2]: b\n[6]:[1]: c\n[5]:[2]: d\n").stepsBack, 0u);
    EXPECT_EQ(IndexOf("[5]:[1]: a\n[4]:[2]: b\n[6]:[1]: c\n[3]:[2]: d\n").stepsBack, 1u);
}

TEST(LineIndex, AReturnStaysBehindItsCall) {
    LineRules rules;
    rules.staysBehind = [](std::string_view line, std::string_view before) {
        return line.ends_with("leave") && before.ends_with("enter");
    };
    const std::string text = "[1] a\n[9] enter\n[5] leave\n[7] b\n[12] c\n";
    const auto index = IndexOf(text, rules);
    EXPECT_THAT(Read(index),
                testing::ElementsAre("[1] a", "[7] b", "[9] enter", "[5] leave", "[12] c"));
    EXPECT_EQ(index.stepsBack, 1u);
}

TEST(LineIndex, OnlyAnEarlierTimeIsAStepBack) {
    EXPECT_EQ(IndexOf("[5] a\n[5] b\n[6] c\n[6] d\n").stepsBack, 0u);
    EXPECT_EQ(IndexOf("[5] a\n[4] b\n[5] c\n[6] d\n[5] e\n").stepsBack, 2u);
}

TEST(LineIndex, OtherRadixesAndOddTimes) {
    LineRules rules;
    rules.radix = 16;
    EXPECT_THAT(Read(IndexOf("[FF] a\n[A0] b\n[100] c\n", rules)),
                testing::ElementsAre("[A0] b", "[FF] a", "[100] c"));
    // Longer than any number, more digits than the quick way takes, zeros in front.
    const std::string text =
        "[99999999999999999999] a\n[000000000000000000002] b\n[1] c\n"
        "[9223372036854775807] d\n[3] e\n";
    const auto index = IndexOf(text);
    EXPECT_THAT(Read(index), testing::ElementsAre("[99999999999999999999] a", "[1] c",
                                                  "[000000000000000000002] b", "[3] e",
                                                  "[9223372036854775807] d"));
    EXPECT_EQ(index.timedRecords, 4u);
}

}  // namespace
}  // namespace kvx::formats
