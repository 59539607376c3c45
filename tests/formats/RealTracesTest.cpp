// Recordings of real kernels. They are not part of the project: without them these tests skip.

#include <gmock/gmock.h>

#include <cstdio>
#include <map>
#include <set>

#include "formats/TraceFiles.h"
#include "support/Needs.h"

namespace kvx::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

#define TRACES_OR_SKIP(folder)               \
    const std::string folder = RealTraces(); \
    if (folder.empty()) KVX_SKIP("no folder shared/traces beside the project")

TEST(RealTraces, EveryDispatchOfAspLongIsShown) {
    TRACES_OR_SKIP(folder);
    const auto path = folder + "/itron-log/asp/asp_long.log";
    const std::map<std::string, std::string> names = {
        {"1", "LOGTASK"}, {"2", "TASK1"}, {"3", "TASK2"}, {"4", "TASK3"}, {"5", "MAIN_TASK"}};
    std::multiset<std::string> expected;
    std::ifstream log(path);
    for (std::string line; std::getline(log, line);) {
        long long time = 0;
        int task = 0;
        if (std::sscanf(line.c_str(), "[%lld] dispatch to task %d.", &time, &task) == 2)
            expected.insert(FormatText("%lld %s", time, names.at(std::to_string(task)).c_str()));
    }
    ASSERT_EQ(expected.size(), 111u);
    const auto trace = Show(path);
    trace->Summarize();
    for (const auto& line : Events(*trace)) {
        if (line.find(" run ") == std::string::npos) continue;
        const auto at =
            expected.find(line.substr(0, line.find(' ')) + line.substr(line.find(": ") + 1));
        if (at != expected.end()) expected.erase(at);
    }
    EXPECT_THAT(expected, IsEmpty());
}

TEST(RealTraces, EveryItronLogOpensAndNamesNoLossThatItDoesNotHave) {
    TRACES_OR_SKIP(folder);
    int logs = 0;
    for (const auto& entry : fs::recursive_directory_iterator(folder + "/itron-log")) {
        if (entry.path().extension() != ".log") continue;
        ++logs;
        const auto trace = Show(entry.path().string());
        ASSERT_TRUE(trace) << entry.path();
        for (const auto processor : trace->GetRecording()->Processors()) {
            ASSERT_TRUE(trace->ShowProcessor(processor));
            const auto summary = trace->Summarize();
            EXPECT_GT(summary.Shown().dispatches, 50u) << entry.path();
            EXPECT_EQ(trace->Check(), "") << entry.path();
            // Of asp_long.log a stretch was overwritten, and with it the issue of one sig_sem.
            const bool damaged = entry.path().filename() == "asp_long.log";
            EXPECT_THAT(CountersOf(summary.losses),
                        damaged ? testing::Matcher<std::vector<std::string>>(
                                      ElementsAre("returns_without_call 1"))
                                : IsEmpty())
                << entry.path();
        }
    }
    EXPECT_GE(logs, 12);
}

// The standard format tells of one run what the kernel's own log tells, but for dispatches from a
// task: runs of tasks and handlers begin at the same times.
TEST(RealTraces, BothFormatsOfOneRunAgree) {
    TRACES_OR_SKIP(folder);
    const auto runsOf = [&](const std::string& name, std::uint32_t processor) {
        const auto trace = Show(folder + "/itron-log/" + name);
        EXPECT_TRUE(processor == 0 || trace->ShowProcessor(processor));
        trace->Summarize();
        std::vector<std::string> runs;
        for (const auto& line : Events(*trace))
            if (line.find(" run ") != std::string::npos && !line.ends_with(": Idle"))
                runs.push_back(line.substr(0, line.find(' ')) + line.substr(line.find(": ")));
        return runs;
    };
    EXPECT_EQ(runsOf("asp/asp_short.log", 0), runsOf("asp/asp_short_standard_format.log", 0));
    for (const std::uint32_t processor : {1u, 2u})
        EXPECT_EQ(runsOf("fmp/fmp_short.log", processor),
                  runsOf("fmp/fmp_short_standard_format.log", processor));
}

// Lines that the library's own program prints for a trace; -1 where the program is missing.
int LinesOfBabeltrace(const std::string& path) {
    FILE* pipe = popen(("babeltrace2 '" + path + "' 2>/dev/null").c_str(), "r");
    int lines = 0;
    for (int c; (c = std::fgetc(pipe)) != EOF;) lines += c == '\n';
    return pclose(pipe) == 0 ? lines : -1;
}

TEST(RealTraces, CtfEventCountsAgreeWithTheLibrarysProgram) {
    TRACES_OR_SKIP(folder);
    for (const char* name :
         {"zephyr/v2.5-philosophers-mutex", "zephyr/v3.3-philosophers-mutex",
          "zephyr/v3.3-synchronization", "zephyr/v3.3-rt_mix", "lttng/perf-taskset2",
          "lttng/multi-domains", "lttng/lttng-tracefile-rotation"}) {
        const auto path = folder + "/ctf/" + name;
        const int expected = LinesOfBabeltrace(path);
        if (expected < 0) KVX_SKIP("the program babeltrace2 is not installed");
        const auto trace = Show(path);
        ASSERT_TRUE(trace) << path;
        for (const auto processor : trace->GetRecording()->Processors()) {
            ASSERT_TRUE(trace->ShowProcessor(processor));
            const auto summary = trace->Summarize();
            EXPECT_EQ(summary.records, static_cast<std::uint32_t>(expected)) << path;
            EXPECT_EQ(trace->Check(), "") << path;
        }
    }
}

TEST(RealTraces, ZephyrSwitchesAreDispatches) {
    TRACES_OR_SKIP(folder);
    const auto trace = Show(folder + "/ctf/zephyr/v3.3-rt_mix");
    const auto summary = trace->Summarize();
    // 1294 switches, and 444 interrupts that are dispatched to and back from.
    EXPECT_EQ(summary.Shown().dispatches, 1294u + 2 * 444u);
    EXPECT_THAT(CountersOf(summary.losses), IsEmpty());
    const auto metadata = Show(folder + "/ctf/zephyr/v3.3-rt_mix/metadata");
    EXPECT_EQ(metadata->Summarize().totals.events, summary.totals.events);
}

TEST(RealTraces, InvalidCtfIsRefusedOrReadUpToTheDamage) {
    TRACES_OR_SKIP(folder);
    for (const char* name : {"fail1", "metadata-syntax-error", "smalltrace"}) {
        const auto path = folder + "/ctf/invalid/" + name;
        const auto recording = formats::OpenRecording(path);
        ASSERT_FALSE(recording) << path;
        EXPECT_THAT(recording.GetError().message, testing::StartsWith(path + "/metadata: line "));
    }
    const auto trace = Show(folder + "/ctf/invalid/valid-events-then-invalid-events");
    const auto summary = trace->Summarize();
    EXPECT_EQ(summary.records, 2u);
    EXPECT_THAT(CountersOf(summary.losses), ElementsAre("damaged_tail 1"));
}

TEST(RealTraces, PacketsThatTheTracerDroppedAreALoss) {
    TRACES_OR_SKIP(folder);
    EXPECT_THAT(
        CountersOf(Show(folder + "/wrong/missed-loss-discarded-packets")->Summarize().losses),
        ElementsAre("discarded_packets 2"));
}

// Files on which the library ends its process, or never comes back.
TEST(RealTraces, DamagedCtfGivesOneAnswerAndWhatCanBeRead) {
    TRACES_OR_SKIP(folder);
    const auto path = [&](const std::string& name) { return folder + "/damaged/" + name; };
    for (const auto& [name, message] :
         {std::pair{"hang-metadata-truncated/bug446190-cut-at-29649", "/metadata: byte 28672: "},
          {"hang-metadata-truncated/trace-with-index", "/metadata: byte 0: "},
          {"crash-meta-ctx-sequence", ": the trace holds no events"}}) {
        const auto recording = formats::OpenRecording(path(name));
        ASSERT_FALSE(recording) << name;
        EXPECT_THAT(recording.GetError().message, testing::StartsWith(path(name) + message));
    }
    struct Row {
        const char* name;
        const char* warning;
        std::uint32_t records;
    };
    for (const auto& row :
         {Row{"crash-stream-packet-size", "/channel0_2: byte 0: the packet says", 29242},
          {"crash-index-offset", "/index/channel0_1.idx: entry 3 does not agree", 31556},
          {"crash-index-offset-2", "/index/ust_channel_2.idx: entry 5 does not agree", 4000},
          {"message-zephyr-clock-wraps", ": damaged behind event 4108: the times step back",
           4108}}) {
        const auto trace = Show(path(row.name));
        ASSERT_TRUE(trace);
        EXPECT_EQ(trace->Summarize().records, row.records);
        EXPECT_THAT(trace->GetRecording()->Warnings(),
                    testing::Contains(testing::StartsWith(path(row.name) + row.warning)));
    }
}

}  // namespace
}  // namespace kvx::test
