// What is written for other tools: exact, well-formed, and the same when it is opened again.

#include <gmock/gmock.h>

#include <map>
#include <nlohmann/json.hpp>

#include "exports/Exported.h"
#include "support/Needs.h"
#include "workbench/exports/ExportFile.h"

namespace kvx::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Json = nlohmann::json;

constexpr std::string_view kLog =
    "[10] dispatch to task 1.\n[12] enter to wai_sem semid=1.\n[13] task 1 becomes WAITING.\n"
    "[14] dispatch to task 2.\n[20] enter to int handler 5.\n[22] enter to isig_sem semid=1.\n"
    "[23] task 1 becomes RUNNABLE.\n[24] leave from isig_sem ercd=0.\n"
    "[25] leave from int handler 5.\n[26] dispatch to task 1.\n[28] leave from wai_sem ercd=0.\n"
    "[30] enter to act_tsk tskid=2.\n[31] leave from act_tsk ercd=0.\n[40] dispatch from task 1.\n";

// The interrupt of the last one comes while another runs; nothing is known of what stopped.
constexpr std::string_view kFreeRtos =
    "#version 2.2.0\n#timeScale us\n1,[0/0000],0,T,[0/0001]A,0,resume,\n"
    "5,Core_0,0,T,[0/0001]A,0,preempt,\n6,[0/0001]A,0,T,[0/0002]B,0,resume,\n"
    "8,Core_0,0,T,[0/0002]B,0,preempt,\n9,[0/0002]B,0,T,[1/0001]A,0,resume,\n";

constexpr std::string_view kLinux =
    "a-1 [000] 1.0: sched_switch: swapper/0:0 [120] R ==> a:1 [9]\n"
    "a-1 [001] 1.1: sched_switch: b:2 [9] R ==> swapper/1:0 [120]\n"
    "a-1 [000] 1.5: irq_handler_entry: irq=5 name=x\n"
    "a-1 [000] 1.6: sched_waking: comm=b pid=2 prio=9 target_cpu=001\n"
    "a-1 [000] 1.7: irq_handler_exit: irq=5 ret=handled\n"
    "b-2 [001] 1.8: sched_switch: swapper/1:0 [120] R ==> b:2 [9]\n"
    "b-2 [001] 2.0: sched_switch: b:2 [9] T ==> swapper/1:0 [120]\n"
    "a-1 [000] 2.1: sched_switch: a:1 [9] D ==> swapper/0:0 [120]\n"
    "a-1 [000] 2.2: sched_migrate_task: comm=a pid=1 prio=9 orig_cpu=0 dest_cpu=1\n"
    "a-1 [001] 2.3: sched_switch: swapper/1:0 [120] R ==> a:1 [9]\n"
    "a-1 [001] 2.4: sched_switch: a:1 [9] X ==> swapper/1:0 [120]\n";

std::unique_ptr<service::TraceService> ShowText(const TempFolder& folder, std::string_view text) {
    return Show(folder.Write("x.log", text));
}

TEST(ExportCsv, FieldsAreQuotedWhereTheyMustBe) {
    const TempFolder folder;
    folder.Write("x.res", R"({"Resources":{"A,\"b\"":{"Type":"Task","Attributes":{"id":1}}}})");
    const auto trace = ShowText(folder,
                                "[1] dispatch to task 1.\n[2] enter to f a=1, b=2.\n"
                                "[3] leave from f ercd=0.\n[9] dispatch to task 2.\n");
    EXPECT_EQ(Exported(*trace, "csv", std::pair{1, 2}),
              "event,time,kind,context,detail,cpu\r\n"
              "0,1,dispatch,Unknown,\"A,\"\"b\"\"\",0\r\n"
              "1,2,syscall,\"A,\"\"b\"\"\",\"f(a=1, b=2) -> ercd=0\",0\r\n");
}

// The sums of slices by track and name, in counts of a nanosecond; everything else is checked.
std::map<std::string, std::int64_t> CheckTraceEvents(const Json& json) {
    std::map<std::int64_t, std::string> tracks;
    std::map<std::int64_t, std::vector<std::pair<std::int64_t, std::int64_t>>> slices;
    std::map<std::string, std::int64_t> sums;
    std::map<std::int64_t, int> flows;
    const auto nanoseconds = [](const Json& value) {
        return std::llround(value.get<double>() * 1000);
    };
    for (const auto& event : json.at("traceEvents")) {
        const auto ph = event.at("ph").get<std::string>();
        if (ph == "M") {
            if (event.at("name") == "thread_name")
                tracks.emplace(event.at("tid"), event.at("args").at("name"));
            continue;
        }
        EXPECT_TRUE(tracks.contains(event.at("tid")));
        if (ph == "s") ++flows[event.at("id")];
        if (ph == "f") --flows[event.at("id")];
        if (ph != "X") continue;
        const auto begin = nanoseconds(event.at("ts"));
        const auto end = begin + nanoseconds(event.at("dur"));
        slices[event.at("tid")].emplace_back(begin, -end);
        sums[tracks[event.at("tid")] + " " + event.at("name").get<std::string>()] += end - begin;
    }
    for (auto& [track, list] : slices) {
        std::ranges::sort(list);
        std::vector<std::int64_t> open;
        for (const auto& [begin, end] : list) {
            while (!open.empty() && open.back() <= begin) open.pop_back();
            EXPECT_TRUE(open.empty() || -end <= open.back()) << tracks[track];
            open.push_back(-end);
        }
    }
    for (const auto& [id, open] : flows) EXPECT_EQ(open, 0);
    return sums;
}

TEST(ExportPerfetto, RunsStatesAndCalls) {
    const TempFolder folder;
    const auto trace = ShowText(folder, kLog);
    const auto sums = CheckTraceEvents(Json::parse(Exported(*trace, "perfetto")));
    EXPECT_EQ(sums.at("task 1 (task 1) RUN"), 18000);
    EXPECT_EQ(sums.at("task 2 (task 2) RUN"), 7000);
    EXPECT_EQ(sums.at("int handler 5 (handler 5) RUN"), 5000);
    EXPECT_EQ(sums.at("task 1 (task 1) state WAI (SEM)"), 10000);
    EXPECT_EQ(sums.at("task 1 (task 1) calls wai_sem"), 16000);
    // Cut to a range.
    const auto cut = CheckTraceEvents(Json::parse(Exported(*trace, "perfetto", std::pair{21, 27})));
    EXPECT_EQ(cut.at("task 1 (task 1) RUN"), 1000);
    EXPECT_EQ(cut.at("int handler 5 (handler 5) RUN"), 4000);
    const auto arrows = Json::parse(Exported(*trace, "perfetto", {}, true));
    CheckTraceEvents(arrows);
    EXPECT_EQ(std::ranges::count(arrows.at("traceEvents"), "s",
                                 [](const Json& e) { return e.at("ph").get<std::string>(); }),
              1);
}

TEST(ExportPerfetto, TimesAreExactAtAnyCount) {
    const TempFolder folder;
    folder.Write("x.res", R"({"TimeScale":"ns","Resources":{}})");
    const auto trace = ShowText(folder,
                                "[9007199254740993] dispatch to task 1.\n"
                                "[9007199254740994] dispatch to task 2.\n"
                                "[9007199254751995] dispatch to task 1.\n");
    const auto text = Exported(*trace, "perfetto");
    EXPECT_THAT(text, HasSubstr("\"ts\":0,\"dur\":0.001,"));
    EXPECT_THAT(text, HasSubstr("\"ts\":0.001,\"dur\":11.001,"));
    EXPECT_THAT(text, HasSubstr("\"ts\":11.002,\"dur\":0,"));
}

TEST(ExportBtf, OpensWithTheSameRunsAndStates) {
    const TempFolder folder;
    for (const auto text : {kLog, kFreeRtos, kLinux}) {
        const auto trace = ShowText(folder, text);
        ASSERT_TRUE(trace);
        const auto again = Show(folder.Write("y.btf", Exported(*trace, "btf")));
        ASSERT_TRUE(again);
        const auto factor = trace->GetRecording()->Clock().NanosecondsPerCount();
        EXPECT_EQ(AllEvents(*again->Decoded(), false), AllEvents(*trace->Decoded(), false, factor));
    }
    EXPECT_THAT(Exported(*ShowText(folder, kLog), "btf"),
                testing::ContainsRegex("\n12,task 1,[0-9]+,R,wai_sem,0,start\n"));
}

TEST(ExportBtf, RealRecordingsOpenWithTheSameRunsAndStates) {
    const std::string traces = RealTraces();
    if (traces.empty()) KVX_SKIP("no folder shared/traces beside the project");
    const TempFolder folder;
    for (const char* name : {"itron-log/asp/asp_long.log", "itron-log/fmp_mig/fmp_short.log",
                             "btf/tracecompass-20140219-123819.btf", "ctf/zephyr/v3.3-rt_mix"}) {
        const auto trace = Show(traces + "/" + name);
        const auto again = Show(folder.Write("y.btf", Exported(*trace, "btf")));
        ASSERT_TRUE(again) << name;
        const auto factor = trace->GetRecording()->Clock().NanosecondsPerCount();
        EXPECT_EQ(AllEvents(*again->Decoded(), false), AllEvents(*trace->Decoded(), false, factor))
            << name;
    }
}

// The log with its resource file, opened again.
std::unique_ptr<service::TraceService> ThroughItron(
    const TempFolder& folder, service::TraceService& trace,
    std::optional<std::pair<std::int64_t, std::int64_t>> range = {}) {
    trace.Decoded()->WaitForAll();
    auto request = exports::WholeOf(*trace.Decoded());
    if (range) std::tie(request.start, request.end) = *range;
    const auto path = folder.Path("cut.log");
    const auto failure = exports::WriteFiles(*exports::FindExporter("itron"), request, path);
    EXPECT_FALSE(failure) << failure->message;
    return Show(path);
}

TEST(ExportItron, OpensWithTheSameEvents) {
    const TempFolder folder;
    for (const auto text : {kLog, kFreeRtos, kLinux}) {
        const auto trace = ShowText(folder, text);
        ASSERT_TRUE(trace);
        const auto again = ThroughItron(folder, *trace);
        ASSERT_TRUE(again);
        EXPECT_EQ(AllEvents(*again->Decoded()), AllEvents(*trace->Decoded()));
    }
}

// Where records were lost nothing is known, in the copy as in the recording.
TEST(ExportItron, GapsStayGaps) {
    const TempFolder folder;
    const auto trace = ShowText(folder, std::string(kLinux) +
                                            "CPU:1 [LOST 3 EVENTS]\n"
                                            "a-1 [001] 3.0: sched_switch: a:1 [9] S ==> b:2 [9]\n");
    ASSERT_TRUE(trace);
    EXPECT_EQ(AllEvents(*ThroughItron(folder, *trace)->Decoded()), AllEvents(*trace->Decoded()));
}

TEST(ExportItron, ACutShowsWhatTheWholeShowsThere) {
    const TempFolder folder;
    const auto trace = ShowText(folder, kLog);
    const auto cut = ThroughItron(folder, *trace, std::pair{21, 30});
    ASSERT_TRUE(cut);
    // The handler runs over task 2, task 1 waits; the call of the handler and the last one return.
    EXPECT_THAT(AllEvents(*cut->Decoded()),
                ElementsAre("0 21 state task 1: WAI (SEM)",
                            "0 22 syscall int handler 5: isig_sem(semid=1) -> ercd=0",
                            "0 23 state task 1: RDY", "0 25 dispatch int handler 5: task 2",
                            "0 26 dispatch task 2: task 1", "0 26 state task 2: RDY",
                            "0 30 syscall task 1: act_tsk(tskid=2) -> ercd=0"));
    EXPECT_THAT(CountersOf(cut->Summarize().losses), testing::IsEmpty());
    // Without the file beside it the log stands for itself.
    EXPECT_THAT(Exported(*trace, "itron", std::pair{21, 22}),
                testing::StartsWith("[21] recording begins.\n[22] enter to isig_sem semid=1.\n"));
}

TEST(ExportItron, RealRecordingsOpenWithTheSameEvents) {
    const std::string traces = RealTraces();
    if (traces.empty()) KVX_SKIP("no folder shared/traces beside the project");
    const TempFolder folder;
    for (const char* name : {"itron-log/asp/asp_long.log", "itron-log/fmp/fmp_long.log",
                             "ctf/zephyr/v3.3-rt_mix", "ctf/lttng/lttng-tracefile-rotation",
                             "btf/example-2cores.btf", "btf/tracecompass-20140219-123819.btf",
                             "tracex/demo_filex.trx", "systemview/heap_log_mcore.svdat"}) {
        const auto trace = Show(traces + "/" + name);
        ASSERT_TRUE(trace) << name;
        const auto again = ThroughItron(folder, *trace);
        ASSERT_TRUE(again) << name;
        const auto all = AllEvents(*trace->Decoded());
        EXPECT_EQ(AllEvents(*again->Decoded()), all) << name;
        // A cut has every event of its range; states that hold at its start come besides.
        const auto first = trace->GetRecording()->FirstTime();
        const auto length = trace->GetRecording()->LastTime() - first;
        const std::pair range{first + length / 3, first + length / 2};
        const auto cut = ThroughItron(folder, *trace, range);
        ASSERT_TRUE(cut) << name;
        auto whole = AllEvents(*trace->Decoded(), true, 1, range);
        auto part = AllEvents(*cut->Decoded(), true, 1, range);
        // Where a task that has no state was before the range, the cut does not show.
        for (auto* lines : {&whole, &part})
            std::erase_if(*lines, [](const std::string& line) { return line.ends_with("+PAUSE"); });
        std::ranges::sort(whole);
        std::ranges::sort(part);
        EXPECT_TRUE(std::ranges::includes(part, whole)) << name;
        const auto atStart = FormatText(" %lld state ", static_cast<long long>(range.first));
        const auto others = std::ranges::count_if(
            part, [&](const std::string& line) { return line.find(atStart) == std::string::npos; });
        EXPECT_LE(others, static_cast<std::ptrdiff_t>(whole.size())) << name;
    }
}

TEST(ExportFile, LeavesNothingBehindWhereItFails) {
    const TempFolder folder;
    const auto trace = ShowText(folder, kLog);
    trace->Decoded()->WaitForAll();
    auto request = exports::WholeOf(*trace->Decoded());
    const auto& csv = *exports::FindExporter("csv");
    const auto failure = exports::WriteFiles(csv, request, folder.Path("none/x.csv"));
    ASSERT_TRUE(failure);
    EXPECT_THAT(failure->message, HasSubstr("No such file"));
    EXPECT_THAT(exports::WriteFiles(csv, request, folder.Path("x.log"))->message,
                HasSubstr("the recording itself"));
    folder.Write("y.csv", "old");
    request.progress = [](double) { return false; };
    EXPECT_TRUE(exports::WriteFiles(csv, request, folder.Path("y.csv"))->cancelled);
    EXPECT_EQ(std::filesystem::file_size(folder.Path("y.csv")), 3u);
    request.progress = nullptr;
    EXPECT_FALSE(exports::WriteFiles(csv, request, folder.Path("y.csv")));
    EXPECT_GT(std::filesystem::file_size(folder.Path("y.csv")), 100u);
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path("")))
        names.push_back(entry.path().filename());
    EXPECT_THAT(names, testing::UnorderedElementsAre("x.log", "y.csv"));
}

}  // namespace
}  // namespace kvx::test
