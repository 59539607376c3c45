#include <gtest/gtest.h>

#include "core/CoreFixture.h"
#include "core/RandomTrace.h"

namespace kvx::test {

namespace {

// One event a record, at 10, 20, 30, ...; every third is a call.
ScriptedTrace Ticks(int events) {
    ScriptedTrace trace;
    const auto a = trace.AddTask(1, "A");
    const auto b = trace.AddTask(2, "B");
    for (int i = 0; i < events; ++i) {
        const std::int64_t t = 10 * (i + 1);
        if (i % 3 == 2)
            trace.Call(t, a, 1, {i % 2 ? "odd" : "even", "", ""});
        else
            trace.Dispatch(t, i % 3 ? a : b, i % 3 ? b : a);
    }
    return trace;
}

std::uintptr_t Sender(ScriptedView& view) {
    return reinterpret_cast<std::uintptr_t>(static_cast<IViewSender*>(&view));
}

TEST(Engine, OpensAtMostThreeHundredRecords) {
    for (const int records : {1, 299, 300, 301, 5000}) {
        Core core(Ticks(records), false);
        core.service.firstRecord = 7;
        ASSERT_EQ(core.data.engine.Open(&core.view), 1);
        EXPECT_EQ(core.service.Decoded(), static_cast<std::uint32_t>(std::min(records, 300)));
        EXPECT_EQ(core.data.engine.IsValid(), 1);
        double first = 0, end = 0, analysed = 0;
        EXPECT_EQ(core.data.engine.GetTimes(&first, &end, &analysed), 1);
        EXPECT_EQ(first, 10.0);
        EXPECT_EQ(end, records * 10.0 + 1);
        EXPECT_EQ(analysed, std::min(records, 300) * 10.0);
        EXPECT_EQ(core.service.calls["EndAnalysis"], 1);
        ASSERT_EQ(core.host.broadcasts.size(), 1u);
        EXPECT_EQ(core.host.broadcasts[0].datum, Sender(core.view));
    }
}

TEST(Engine, StaysClosedWhenTheTraceCannotBeRead) {
    for (const char* failing : {"IsTraceAvailable", "GetRecordRange", "AnalyzeRecords"}) {
        Core core(Ticks(10), false);
        core.service.failing = {failing};
        double untouched = 5;
        EXPECT_EQ(core.data.engine.Open(nullptr), 0) << failing;
        EXPECT_EQ(core.data.engine.IsValid(), 0);
        EXPECT_EQ(core.data.engine.GetTimes(&untouched, &untouched, &untouched), 0);
        EXPECT_EQ(untouched, 5);
        EXPECT_EQ(core.service.calls["DiscardData"], 1);
        EXPECT_EQ(core.data.contexts.GetCount(), 0);
        ASSERT_EQ(core.host.broadcasts.size(), 1u);
        EXPECT_EQ(core.host.broadcasts[0].datum, 0u);
    }
    Core core(Ticks(10), false);
    core.service.available = false;
    EXPECT_EQ(core.data.engine.Open(nullptr), 0);
    core.host.services.clear();
    EXPECT_EQ(core.data.engine.Open(nullptr), 0);
    EXPECT_EQ(core.data.engine.GetStatus(), kRangeFull);
    EXPECT_EQ(core.data.engine.FindDispatchBefore(50), 0u);
    EXPECT_EQ(core.host.broadcasts.size(), 1u);  // none for the missing service
}

class Decoding : public testing::TestWithParam<bool> {
  protected:
    Decoding() : core(Ticks(3000), false) {
        core.service.bulk = GetParam();
        core.data.engine.Open(nullptr);
        core.host.broadcasts.clear();
        core.service.calls.clear();
    }
    int AnalyzeUpTo(double target) {
        return core.data.engine.AnalyzeUpTo(&core.view, target, &advanced);
    }
    Core core;
    int advanced = -1;
};

INSTANTIATE_TEST_SUITE_P(PlainAndBulk, Decoding, testing::Bool());

TEST_P(Decoding, DoesNothingWhereTheTargetIsCovered) {
    EXPECT_EQ(AnalyzeUpTo(3000), 1);
    EXPECT_EQ(advanced, 0);
    core.service.coveredAhead = 100;
    EXPECT_EQ(AnalyzeUpTo(3001), 1);  // decodes one record, which covers more
    EXPECT_EQ(core.service.Decoded(), 301u);
    EXPECT_EQ(advanced, 1);
    EXPECT_EQ(AnalyzeUpTo(3110), 1);
    EXPECT_EQ(advanced, 0);
    EXPECT_EQ(core.view.captions, std::vector<CString>{"Analyzing..."});
    EXPECT_EQ(core.host.broadcasts.size(), 1u);
}

TEST_P(Decoding, StopsAtTheFirstRecordBeyondTheTarget) {
    EXPECT_EQ(AnalyzeUpTo(10000), 1);
    EXPECT_EQ(core.service.Decoded(), 1001u);
    EXPECT_EQ(core.view.polls, 2);  // after 302 and 604 of the 701 records
    EXPECT_EQ(core.view.destroyed, 1);
    EXPECT_EQ(core.service.calls["EndAnalysis"], 1);
    EXPECT_EQ(core.host.broadcasts.size(), 1u);
    EXPECT_TRUE(std::is_sorted(core.view.shown.begin(), core.view.shown.end()));
    EXPECT_EQ(core.view.shown.back(), 100);
}

TEST_P(Decoding, KeepsWhatWasDecodedWhenStopped) {
    core.view.stopAtPoll = 2;
    EXPECT_EQ(AnalyzeUpTo(1e9), 0);
    EXPECT_EQ(advanced, 1);
    EXPECT_EQ(core.service.Decoded(), 300u + 2 * 302);
    EXPECT_EQ(core.service.calls["EndAnalysis"], 1);
    EXPECT_EQ(core.host.broadcasts.size(), 1u);
    double first = 0, end = 0, analysed = 0;
    core.data.engine.GetTimes(&first, &end, &analysed);
    EXPECT_EQ(analysed, 9040);
    core.view.stopAtPoll = 0;
    EXPECT_EQ(AnalyzeUpTo(1e9), 1);  // goes on where it stopped
    EXPECT_EQ(core.service.Decoded(), 3000u);
    EXPECT_EQ(AnalyzeUpTo(1e9), 1);
    EXPECT_EQ(advanced, 0);
}

TEST_P(Decoding, GoesOnWithoutADialog) {
    core.view.createFails = true;
    core.view.stopAtPoll = 1;
    EXPECT_EQ(AnalyzeUpTo(5000), 1);
    core.view.hasDialog = false;
    EXPECT_EQ(AnalyzeUpTo(6000), 1);
    EXPECT_EQ(core.data.engine.AnalyzeUpTo(nullptr, 7000, &advanced), 1);
    EXPECT_EQ(core.service.Decoded(), 701u);
    EXPECT_EQ(core.view.polls, 0);
    EXPECT_EQ(core.view.destroyed, 0);
}

TEST_P(Decoding, CountsRecordsThatCannotBeDecodedAsDone) {
    core.service.failing = {"AnalyzeRecords", "AnalyzeUntil"};
    EXPECT_EQ(AnalyzeUpTo(1e9), 1);
    EXPECT_EQ(advanced, 1);
    EXPECT_EQ(AnalyzeUpTo(1e9), 1);
    EXPECT_EQ(advanced, 0);
}

TEST_P(Decoding, SearchesWhatIsLeft) {
    core.service.searchText = "odd";
    int found = -1;
    std::uint32_t result = 0;
    EXPECT_EQ(core.data.engine.AnalyzeRestAndSearch(&core.view, &found, &result), 1);
    EXPECT_EQ(found, 1);
    EXPECT_EQ(result, 299u);  // the last call that was decoded already
    EXPECT_EQ(core.service.Decoded(), 3000u);
    EXPECT_TRUE(core.host.broadcasts.empty());
    EXPECT_EQ(core.view.destroyed, 1);
    EXPECT_EQ(core.data.engine.AnalyzeRestAndSearch(&core.view, &found, &result), 0);
    EXPECT_EQ(found, 0);
}

TEST_P(Decoding, SearchesFromTheIndicatorWhenItLiesLater) {
    core.data.markers.SetMarker(nullptr, kMarkerIndicator, 299);
    core.service.searchText = "odd";
    core.view.stopAtPoll = 1;
    int found = -1;
    std::uint32_t result = 0;
    EXPECT_EQ(core.data.engine.AnalyzeRestAndSearch(&core.view, &found, &result), 1);
    EXPECT_EQ(core.service.Decoded(), 602u);
    EXPECT_EQ(found, 1);
    EXPECT_EQ(result, 305u);
    core.service.searchText = "none";
    core.data.engine.AnalyzeRestAndSearch(&core.view, &found, &result);
    EXPECT_EQ(found, 0);
}

TEST(Engine, ClearEmptiesEverythingDiscardOnlyTheAnalyses) {
    Core core(Ticks(100));
    core.data.engine.Open(nullptr);
    core.SetRange(1, 90);
    core.data.engine.Discard(&core.view);
    EXPECT_EQ(core.data.engine.IsValid(), 0);
    EXPECT_EQ(core.data.runTime.Records().size(), 0u);
    EXPECT_EQ(core.data.rdyToRun.RecordCount(), 0);
    EXPECT_EQ(core.data.sysCalls.RowCount(), 0);
    EXPECT_EQ(core.data.contexts.GetCount(), 2);
    EXPECT_NE(core.data.markers.GetMarkerTime(kMarkerEnd), 0.0);
    EXPECT_EQ(core.host.broadcasts.back().datum, Sender(core.view));

    core.data.engine.Open(nullptr);
    core.data.engine.Clear(nullptr, 0);
    EXPECT_EQ(core.data.contexts.GetCount(), 0);
    EXPECT_EQ(core.data.markers.GetMarkerTime(kMarkerEnd), 0.0);
    EXPECT_EQ(core.service.calls["DiscardData"], 1);
    core.data.engine.Clear(nullptr, 1);
    EXPECT_EQ(core.service.calls["DiscardData"], 2);
}

TEST(Engine, FindsEventsAndDispatchesByTime) {
    std::mt19937 random(2);
    for (int round = 0; round < 300; ++round) {
        ScriptedTrace trace = RandomTrace(random, {.contexts = 3, .events = Draw(random, 1, 900)});
        for (std::uint32_t e = 0; e < trace.Count(); ++e) trace.time[e] += e;  // no two equal
        Core core(trace);
        core.service.bulk = round % 2;
        const auto time = [&](std::uint32_t e) { return static_cast<double>(trace.time[e]); };
        const double t = time(0) + Draw(random, 0, static_cast<int>(trace.time.back()) + 2);
        std::uint32_t after = 0;
        std::uint32_t dispatch = 0;
        for (; after < trace.Count() && time(after) < t; ++after)
            if (trace.kind[after] == kEventDispatch) dispatch = after;
        const std::uint32_t near = core.data.engine.FindEventNear(t);
        EXPECT_LE(near, after);
        EXPECT_LE(after - near, 100u);
        EXPECT_EQ(core.data.engine.FindDispatchBefore(t), dispatch) << t;

        for (int line = 0; line < 3; ++line) {
            const auto& states = trace.statesOf[static_cast<std::size_t>(line)];
            std::uint32_t first = 9, last = 9, at = 0;
            core.data.engine.GetContextEventRange(t, line, &first, &last);
            while (at < states.size() && time(states[at]) < t) ++at;
            EXPECT_EQ(first, at == states.size() || at == 0 ? 0 : at - 1);
            EXPECT_EQ(last, states.empty() ? 0 : states.size() - 1);
        }
    }
}

TEST(Engine, WritesTimesAsTheServiceConverts) {
    Core core(Ticks(10));
    EXPECT_EQ(core.TimeText(12345.0), "12345");
    EXPECT_EQ(core.TimeText(0.5), "0");
    core.service.timeText = true;
    const double t = ((1 * 60.0 + 2) * 60 + 3) * 1e6 + 4005;
    EXPECT_EQ(core.TimeText(t), "01:02:03.004.005");
    EXPECT_EQ(core.TimeText(t + 0.9), "01:02:03.004.005");
    EXPECT_EQ(core.TimeText(100 * 3600e6), "100:00:00.000.000");
    core.service.nanoseconds = true;
    core.service.nanosecondsPerCount = 7;
    EXPECT_EQ(core.TimeText(1), "00:00:00.000.000.007");
    core.service.failing = {"CountToTime"};
    CString text = "as it was";
    core.data.engine.FormatTime(1, text);
    EXPECT_EQ(text, "as it was");
    core.host.services.clear();
    core.data.engine.FormatTime(1, text);
    EXPECT_EQ(text, "as it was");
}

TEST(EngineWithoutEvents, EveryTimeIsBeforeTheFirst) {
    Core core;
    EXPECT_EQ(core.data.engine.FindDispatchBefore(5.0), 0u);
    EXPECT_EQ(core.data.engine.FindEventNear(5.0), 0u);
}

}  // namespace

}  // namespace kvx::test
