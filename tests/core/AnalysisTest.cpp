#include <gtest/gtest.h>

#include <algorithm>

#include "core/AnalysisModel.h"
#include "core/RandomTrace.h"

namespace kvx::test {

namespace {

template <class Record>
void ExpectSame(const Record& actual, const ModelRecord& expected) {
    EXPECT_EQ(actual.Num, expected.num);
    EXPECT_EQ(actual.Max, expected.max);
    EXPECT_EQ(actual.Min, expected.min);
    EXPECT_EQ(actual.Avg, expected.avg);
    EXPECT_EQ(actual.Total, expected.total);
    EXPECT_EQ(actual.maxEvents.Events(), expected.maxEvents);
    EXPECT_EQ(actual.minEvents.Events(), expected.minEvents);
}

std::vector<std::uint32_t> ListedEvents(Core& core) {
    std::vector<std::uint32_t> events;
    for (int k = 0; k < core.data.sysCalls.RowCount(); ++k) {
        std::uint32_t event = 0;
        core.service.GetHistoryEvent(core.data.sysCalls.RowHistoryIndex(k), &event);
        events.push_back(event);
    }
    return events;
}

void ExpectModel(Core& core, const std::set<std::string>& chosen) {
    const AnalysisModel model(core);
    auto runs = model.RunTime();
    for (const CRunTime& record : core.data.runTime.Records()) {
        const ModelRecord& expected = runs[static_cast<int>(record.context)];
        ExpectSame(record, expected);
        EXPECT_EQ(record.Ratio, expected.ratio);
    }
    EXPECT_EQ(core.data.runTime.Records().size(), core.service.Trace().contexts.size());

    auto waits = model.ReadyToRun();
    int tasks = 0;
    for (int line = 0; line < core.data.contexts.GetCount(); ++line) {
        const CRdyToRun* const record = core.data.rdyToRun.Find(static_cast<std::uint32_t>(line));
        ASSERT_EQ(record != nullptr, model.IsTask(line));
        if (!record) continue;
        ExpectSame(*record, waits[line]);
        EXPECT_EQ(record->measured, waits[line].measured);
        EXPECT_EQ(core.data.rdyToRun.Record(tasks++), record);
        EXPECT_EQ(core.data.rdyToRun.Record(-1), nullptr);
    }
    EXPECT_EQ(core.data.rdyToRun.RecordCount(), tasks);
    EXPECT_EQ(ListedEvents(core), model.SysCalls(chosen));
}

// Starts, ends and partly decoded traces of every kind, read both ways, in a shuffled line order.
TEST(Analyses, AgreeWithTheModelOnRandomTraces) {
    std::mt19937 random(4);
    for (int round = 0; round < 10000 && !testing::Test::HasFailure(); ++round) {
        RandomTraceShape shape;
        shape.contexts = Draw(random, 1, 8);
        shape.events = Draw(random, 1, 80);
        shape.longestStep = Draw(random, 0, 4);
        shape.firstTime = Draw(random, 0, 3) ? Draw(random, 1, 9) : 0;
        Core core(RandomTrace(random, shape), false);
        std::int64_t a = 0;
        core.service.AnalyzeRecords(0, Draw(random, 0, shape.events - 1), &a, &a, &a);
        core.service.bulk = Draw(random, 0, 1);
        core.service.MoveContext(0, shape.contexts - 1);
        if (Draw(random, 0, 3) == 0) {
            core.service.pickUpChoice = {"call1", "call3"};
            core.service.StartPickUp();
        }
        core.data.contexts.Load();
        const auto at = [&] { return static_cast<std::uint32_t>(Draw(random, 0, shape.events)); };
        core.SetRange(at(), at());
        ExpectModel(core, core.service.pickUpChoice);
        EXPECT_EQ(core.data.runTime.RowCount(), shape.contexts);
    }
}

// One task runs in [10, 20), [30, 45) and, when the range is left open, from 60 on.
Core TwoTasks() {
    ScriptedTrace trace;
    const auto a = trace.AddTask(1, "A");
    const auto b = trace.AddTask(2, "B");
    trace.State(5, a, 1);
    trace.Dispatch(10, b, a);
    trace.Dispatch(20, a, b);
    trace.Dispatch(30, b, a);
    trace.State(40, b, 1);
    trace.Dispatch(45, a, b);
    trace.Call(50, b, 4, {"wai_sem", "semid=1", "ercd=0"});
    trace.Dispatch(60, b, a);
    trace.Call(70, a, 1, {"ext_tsk", "", ""});
    return Core(trace);
}

TEST(RunTime, CutsRunsAtTheRangeAndRemembersThemThere) {
    Core core = TwoTasks();
    core.SetRange(4, 8);  // 40 to 70: the second run of A is cut at its start, the third at its end
    const CRunTime* const a = core.data.runTime.Find(0);
    ASSERT_NE(a, nullptr);
    EXPECT_EQ(a->Num, 2);
    EXPECT_EQ(a->Total, 15.0);
    EXPECT_EQ(a->Max, 10.0);
    EXPECT_EQ(a->maxEvents.Events(), std::vector<std::uint32_t>{7});
    EXPECT_EQ(a->minEvents.Events(), std::vector<std::uint32_t>{4});
    EXPECT_DOUBLE_EQ(a->Ratio + core.data.runTime.Find(1)->Ratio, 1.0);

    core.SetRange(3, 3);  // no range
    EXPECT_EQ(core.data.runTime.Find(0)->Num, 0);
    EXPECT_EQ(core.data.runTime.RowCount(), 2);
}

TEST(RunTime, ADispatchToAnUnlistedContextHasNoRow) {
    Core core = TwoTasks();
    core.service.Trace().AddTask(3, "C");
    core.service.Trace().Dispatch(80, 0, 2);
    core.service.Trace().Dispatch(90, 2, 0);
    core.service.Load(core.service.Trace());
    core.service.DecodeAll();
    core.SetRange(1, 10);  // the table still holds two contexts
    EXPECT_EQ(core.data.runTime.RowCount(), 2);
    ASSERT_NE(core.data.runTime.Find(2), nullptr);
    EXPECT_EQ(core.data.runTime.Find(2)->Total, 10.0);
}

TEST(Navigation, VisitsTheEventsOfAnExtremeInTurn) {
    ScriptedTrace trace;
    const auto a = trace.AddTask(1, "A");
    const auto idle = trace.AddIdle();
    for (const int t : {10, 20, 30, 40}) trace.Dispatch(t, t % 20 ? idle : a, t % 20 ? a : idle);
    Core core(trace);
    core.SetRange(0, 3);
    CRunTime* const record = core.data.runTime.Find(a);
    const std::size_t before = core.host.broadcasts.size();
    for (const std::uint32_t expected : {0u, 2u, 0u}) {
        record->GoToNextMax(&core.view);
        EXPECT_EQ(core.data.markers.GetMarkerEvent(kMarkerIndicator), expected);
        EXPECT_EQ(record->IndicatorOnMax(), 1);
    }
    EXPECT_EQ(core.view.invalidated, 3);
    EXPECT_EQ(core.host.broadcasts.size(), before + 3);
    EXPECT_EQ(core.host.broadcasts.back().datum,
              reinterpret_cast<std::uintptr_t>(static_cast<IViewSender*>(&core.view)));
    core.data.markers.SetMarker(nullptr, kMarkerIndicator, 1);
    EXPECT_EQ(record->IndicatorOnMax(), 0);
    core.host.services.clear();
    EXPECT_EQ(record->IndicatorOnMax(), 0);
}

// The extremes of a million equal waits are found without reading a million events.
TEST(Navigation, SearchesLongListsOfExtremes) {
    ScriptedTrace trace;
    const auto a = trace.AddTask(1, "A");
    const auto idle = trace.AddIdle();
    for (int i = 0; i < 20000; ++i) {
        trace.Dispatch(10 + 20 * i, idle, a);
        trace.Dispatch(20 + 20 * i, a, idle);
    }
    Core core(trace);
    core.SetRange(0, trace.Count() - 1);
    core.data.markers.SetMarker(nullptr, kMarkerIndicator, 19998);
    const std::uint64_t before = core.service.reads;
    EXPECT_EQ(core.data.runTime.Find(a)->IndicatorOnMax(), 1);
    EXPECT_LT(core.service.reads - before, 40u);
}

TEST(ReadyToRun, MeasuresWaitsThatBeganBeforeTheRangeInFull) {
    Core core = TwoTasks();
    core.SetRange(1, 8);
    const CRdyToRun* const a = core.data.rdyToRun.Find(0);
    EXPECT_EQ(a->Num, 3);
    EXPECT_EQ(a->measured, 3);
    EXPECT_EQ(a->Total, (10 - 5) + (30 - 20) + (60 - 45));
    EXPECT_EQ(a->minEvents.Events(), std::vector<std::uint32_t>{0});  // where it became ready
    EXPECT_EQ(a->maxEvents.Events(), std::vector<std::uint32_t>{7});
}

TEST(ReadyToRun, NothingIsMeasuredAcrossAGap) {
    ScriptedTrace trace;
    const auto task = trace.AddTask(1, "A");
    const auto other = trace.AddTask(2, "B");
    const auto unknown = trace.AddUnknown();
    trace.State(1, task, 1);
    trace.State(1, other, 1);
    trace.Dispatch(2, unknown, other);
    trace.Gap(5, other, unknown);  // A is ready, B runs
    trace.Dispatch(9, unknown, task);
    trace.State(9, other, 1);
    trace.Dispatch(12, task, other);
    trace.Dispatch(14, other, unknown);
    Core core(trace);
    core.SetRange(0, core.service.Decoded() - 1);
    const CRdyToRun* a = core.data.rdyToRun.Find(task);
    const CRdyToRun* b = core.data.rdyToRun.Find(other);
    ASSERT_TRUE(a && b);
    EXPECT_EQ(a->Num, 1);
    EXPECT_EQ(a->measured, 0);
    EXPECT_EQ(b->Num, 2);
    EXPECT_EQ(b->Total, 1 + 3);
    core.SetRange(4, core.service.Decoded() - 1);  // looked back for from behind the gap
    EXPECT_EQ(core.data.rdyToRun.Find(task)->measured, 0);
}

// A task that gives the processor up without a word has no state: a gap ends what its loss may
// mean.
TEST(ReadyToRun, TheLossOfTheProcessorMeansNothingBehindAGap) {
    for (const bool inRange : {true, false}) {
        ScriptedTrace trace;
        const auto task = trace.AddTask(1, "A");
        const auto other = trace.AddTask(2, "B");
        const auto unknown = trace.AddUnknown();
        trace.State(1, task, 1);
        trace.Dispatch(2, unknown, task);
        trace.Dispatch(3, task, other);
        trace.Gap(5, other, unknown);
        trace.Dispatch(9, unknown, task);
        trace.Dispatch(11, task, other);
        trace.Dispatch(14, other, task);
        trace.Dispatch(15, task, other);
        Core core(trace);
        core.SetRange(inRange ? 0 : 4, core.service.Decoded() - 1);
        const CRdyToRun* a = core.data.rdyToRun.Find(task);
        ASSERT_TRUE(a);
        EXPECT_EQ(a->Num, inRange ? 3 : 2);
        EXPECT_EQ(a->Total, inRange ? 1 : 0);
    }
}

// A wait of a task that never became ready looks through what lies before the range once, however
// many dispatches there are.
TEST(ReadyToRun, LooksBackOnce) {
    ScriptedTrace trace;
    const auto a = trace.AddTask(1, "A");
    const auto idle = trace.AddIdle();
    for (int i = 0; i < 5000; ++i) trace.Call(i + 1, idle, 1, {});
    for (int i = 0; i < 1000; ++i) {
        trace.Dispatch(6000 + 2 * i, idle, a);
        trace.State(6001 + 2 * i, a, 3);
    }
    Core core(trace);
    for (const bool bulk : {false, true}) {
        core.service.bulk = bulk;
        const std::uint64_t before = core.service.reads;
        core.SetRange(5000, trace.Count() - 1);
        EXPECT_EQ(core.data.rdyToRun.Find(a)->measured, 0);
        EXPECT_LT(core.service.reads - before, 100000u);
    }
}

TEST(SysCalls, ListFollowsTheRangeAndThePickUp) {
    Core core = TwoTasks();
    core.SetRange(0, 5);
    EXPECT_EQ(core.data.sysCalls.EntryCount(), 0);
    core.SetRange(6, 6);
    EXPECT_EQ(core.data.sysCalls.EntryCount(), 1);
    EXPECT_EQ(core.data.sysCalls.Entry(0), 0u);
    EXPECT_EQ(core.data.sysCalls.Entry(1), std::nullopt);
    core.SetRange(0, 8);
    EXPECT_EQ(core.data.sysCalls.EntryCount(), 2);
    core.service.pickUpChoice = {"ext_tsk"};
    core.service.StartPickUp();
    core.data.sysCalls.Build();
    EXPECT_EQ(ListedEvents(core), std::vector<std::uint32_t>{8});
    core.service.EndPickUp();
    core.data.sysCalls.Build();
    EXPECT_EQ(core.data.sysCalls.EntryCount(), 2);
    core.host.services.clear();
    core.data.sysCalls.Build();
    EXPECT_EQ(core.data.sysCalls.EntryCount(), 2);  // as it was
}

// A service is not ours: what it says of contexts is looked up in no table before it is checked.
TEST(Analyses, ContextsThatThereAreNotAreNobodys) {
    constexpr std::uint32_t kHuge = 0x7FFFFFFFu;
    for (const std::uint32_t wrong : {0xFFFFFFFFu, kHuge, 5u}) {
        for (const bool bulk : {false, true}) {
            ScriptedTrace trace;
            const auto task = trace.AddTask(1, "a");
            const auto idle = trace.AddIdle();
            for (int i = 0; i < 6; ++i) {
                trace.State(10 * i, task, 1);
                trace.Dispatch(10 * i + 2, idle, task);
                trace.Dispatch(10 * i + 7, task, idle);
            }
            Core core(trace);
            core.service.bulk = bulk;
            core.service.anyContext = static_cast<std::int32_t>(wrong);
            for (auto* const column : {&core.service.Trace().context, &core.service.Trace().next}) {
                std::ranges::fill(*column, wrong);
            }
            core.SetRange(3, core.service.Decoded() - 1);
            EXPECT_EQ(core.data.rdyToRun.Record(0)->Num, 0) << wrong << bulk;
            EXPECT_EQ(core.data.runTime.Find(0)->Num, 0) << wrong << bulk;
        }
    }
}

// Events of one length are remembered in the order in which they were found.
TEST(ExtremeEvents, KnowTheIndicatorWhateverTheirOrder) {
    ScriptedTrace trace;
    const auto task = trace.AddTask(1, "task");
    for (int i = 0; i < 9; ++i) trace.Call(100 + i, task, 1, {"call", "", ""});
    Core core(trace);
    for (const auto& found : {std::vector{2u, 4u, 7u}, {7u, 4u, 2u}, {4u, 7u, 2u}}) {
        kvx::ExtremeEvents events;
        double longest = 0.0;
        for (const std::uint32_t event : found) events.NoteLongest(longest, 5.0, event);
        for (std::uint32_t event = 0; event < 9; ++event) {
            core.data.markers.SetMarker(nullptr, kMarkerIndicator, event);
            EXPECT_EQ(events.HasIndicator(core.data.markers), std::ranges::count(found, event))
                << event;
        }
    }
}

}  // namespace

}  // namespace kvx::test
