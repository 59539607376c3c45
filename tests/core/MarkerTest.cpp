#include <gtest/gtest.h>

#include "core/CoreFixture.h"
#include "core/RandomTrace.h"

namespace kvx::test {

namespace {

// Events at the given times, all of them calls of one task.
Core CallsAt(const std::vector<std::int64_t>& times) {
    ScriptedTrace trace;
    const auto a = trace.AddTask(1, "A");
    for (const std::int64_t t : times) trace.Call(t, a, 1, {"call", "", ""});
    return Core(trace);
}

std::uint32_t EventOf(const Core& core, int which) {
    return core.data.markers.GetMarkerEvent(which);
}

TEST(Markers, StandOnTheFirstAndLastEventOfTheirTime) {
    Core core = CallsAt({10, 20, 20, 20, 30, 30});
    COSMarker& markers = core.data.markers;
    markers.SetMarker(nullptr, kMarkerStart, 2);
    EXPECT_EQ(EventOf(core, kMarkerStart), 1u);
    markers.SetMarker(nullptr, kMarkerEnd, 4);
    EXPECT_EQ(EventOf(core, kMarkerEnd), 5u);
    markers.SetMarker(nullptr, kMarkerIndicator, 1);
    EXPECT_EQ(EventOf(core, kMarkerIndicator), 3u);
    markers.SetMarker(nullptr, kMarkerStart, 0);  // event 0 stays where it is
    markers.SetMarker(nullptr, kMarkerEnd, 0);
    EXPECT_EQ(EventOf(core, kMarkerEnd), 0u);
    markers.SetMarker(nullptr, kMarkerEnd, 6);  // no such event
    EXPECT_EQ(markers.GetMarkerTime(kMarkerEnd), 10.0);
}

TEST(Markers, AreExchangedWhenDroppedInTheWrongOrder) {
    Core core = CallsAt({10, 20, 30, 40, 50});
    COSMarker& markers = core.data.markers;
    core.SetRange(1, 2);
    EXPECT_EQ(core.data.sysCalls.EntryCount(), 2);
    core.host.broadcasts.clear();
    markers.BeginDrag(kMarkerStart);
    EXPECT_EQ(markers.IsDragging(kMarkerStart), 1);
    markers.SetMarker(&core.view, kMarkerStart, 4);
    EXPECT_EQ(EventOf(core, kMarkerStart), 4u);  // not exchanged while dragged
    EXPECT_EQ(core.data.sysCalls.EntryCount(), 2);
    EXPECT_TRUE(core.host.broadcasts.empty());
    markers.Drop(&core.view);
    EXPECT_EQ(markers.IsDragging(kMarkerStart), 0);
    EXPECT_EQ(EventOf(core, kMarkerStart), 2u);
    EXPECT_EQ(EventOf(core, kMarkerEnd), 4u);
    EXPECT_EQ(core.data.sysCalls.EntryCount(), 3);
    EXPECT_EQ(core.host.broadcasts.size(), 1u);
    markers.Reset();
    EXPECT_EQ(markers.GetMarkerTime(kMarkerStart), 0.0);
}

TEST(Markers, RebuildTheAnalysesOnlyForStartAndEnd) {
    Core core = CallsAt({10, 20, 30, 40, 50});
    core.SetRange(0, 4);
    core.data.sysCalls.Clear();
    core.data.markers.SetMarker(&core.view, kMarkerIndicator, 3);
    EXPECT_EQ(core.data.sysCalls.EntryCount(), 0);
    core.data.markers.SetMarker(&core.view, kMarkerEnd, 3);
    EXPECT_EQ(core.data.sysCalls.EntryCount(), 4);
    EXPECT_EQ(core.data.runTime.RowCount(), 1);  // the rows of before
    core.host.services.clear();
    core.data.markers.SetMarker(&core.view, kMarkerEnd, 1);
    EXPECT_EQ(EventOf(core, kMarkerEnd), 3u);
}

// A marker that is dropped costs what somebody looks at.
TEST(Markers, HaveATableMadeWhenItIsRead) {
    Core core = CallsAt({10, 20, 30, 40, 50});
    core.SetRange(0, 4);
    const auto total = [&] { return core.data.runTime.Records().size(); };
    EXPECT_EQ(total(), 1u);
    core.data.markers.SetMarker(&core.view, kMarkerEnd, 2);
    core.service.Load(ScriptedTrace());
    core.service.DecodeAll();
    core.data.contexts.Load();
    EXPECT_EQ(core.data.sysCalls.EntryCount(), 0) << "there are no calls any more";
    EXPECT_EQ(total(), 0u);
}

TEST(Markers, CommandsKeepTheSortThatDragsGiveUp) {
    Core core = CallsAt({10, 20, 30, 40, 50});
    COSMarker& markers = core.data.markers;
    core.SetRange(1, 3);
    core.data.sysCalls.Sort(2, 0);
    markers.MoveStartIntoDisplay(&core.view, 15);
    markers.MoveEndIntoDisplay(&core.view, 45);
    markers.SetMarkerAt(&core.view, kMarkerStart, 25);
    EXPECT_EQ(EventOf(core, kMarkerStart), 2u);
    EXPECT_EQ(core.data.sysCalls.SortColumn(), 2);
    markers.SetMarkerAt(&core.view, kMarkerStart, 51);
    EXPECT_EQ(EventOf(core, kMarkerStart), 2u) << "no event is there";
    markers.SetMarker(&core.view, kMarkerStart, 1);
    EXPECT_EQ(core.data.sysCalls.SortColumn(), -1);
}

// Each command against a walk over all events.
TEST(Markers, ComeIntoTheDisplayWhereAWalkPutsThem) {
    std::mt19937 random(3);
    for (int round = 0; round < 1000; ++round) {
        std::vector<std::int64_t> times;
        for (int e = Draw(random, 1, 40), t = 1; e > 0; --e)
            times.push_back(t += Draw(random, 0, 3));
        Core core = CallsAt(times);
        const double from = Draw(random, 0, 50);
        const double to = from + Draw(random, 0, 40);
        const int count = static_cast<int>(times.size());
        const auto time = [&](int e) {
            return static_cast<double>(times[static_cast<std::size_t>(e)]);
        };
        int first = 0, last = count - 1, middle = 0;
        while (first < count && time(first) < from) ++first;
        while (last >= 0 && time(last) > to) --last;
        while (middle < count - 1 && time(middle) <= from + (to - from) / 2.0) ++middle;

        COSMarker& markers = core.data.markers;
        markers.MoveStartIntoDisplay(nullptr, from);
        EXPECT_EQ(markers.GetMarkerTime(kMarkerStart), first < count ? time(first) : 0.0);
        markers.Reset();
        markers.MoveEndIntoDisplay(nullptr, to);
        EXPECT_EQ(markers.GetMarkerTime(kMarkerEnd), last >= 0 ? time(last) : 0.0);
        markers.MoveIndicatorIntoDisplay(nullptr, from, to);
        EXPECT_EQ(markers.GetMarkerTime(kMarkerIndicator), time(middle));
        EXPECT_EQ(markers.IsRebuildRows() || markers.IsKeepSort(), false);
    }
}

std::optional<std::uint32_t> WalkedTarget(Core& core, const ChartGeometry& g, int which, int x) {
    const std::vector<std::int64_t>& time = core.service.Trace().time;
    const double from = core.data.markers.GetMarkerTime(which);
    const int at = static_cast<int>(EventOf(core, which));
    if (x < g.left || x == g.X(from)) return std::nullopt;
    const int step = x < g.X(from) ? -1 : 1;
    for (int k = at + step; k >= 0 && k < static_cast<int>(time.size()); k += step) {
        const auto t = static_cast<double>(time[static_cast<std::size_t>(k)]);
        const bool reached = step < 0 ? t < from && g.X(t) <= x : t > from && g.X(t) >= x;
        if (reached) return static_cast<std::uint32_t>(g.X(t) == x ? k : k - step);
    }
    return std::nullopt;
}

TEST(Markers, JumpFromEventToEventWhileDragged) {
    std::mt19937 random(9);
    for (int round = 0; round < 2000; ++round) {
        std::vector<std::int64_t> times;
        for (int e = Draw(random, 1, 60), t = 1; e > 0; --e)
            times.push_back(t += Draw(random, 0, 4));
        Core core = CallsAt(times);
        ChartGeometry g;
        g.left = 10;
        g.right = 10 + Draw(random, 2, 100);
        g.traceStart = static_cast<double>(times.front());
        g.traceEnd = static_cast<double>(core.service.end);
        g.scale = 1 + Draw(random, 0, 50) / 9.0;
        g.displayStart = g.traceStart + Draw(random, 0, 20);
        const int which = Draw(random, 0, 2);
        const auto event =
            static_cast<std::uint32_t>(Draw(random, 0, static_cast<int>(times.size()) - 1));
        core.data.markers.SetMarker(nullptr, which, event);
        core.data.markers.BeginDrag(which);
        for (int x = g.left - 2; x <= g.right + 2; ++x)
            EXPECT_EQ(core.data.markers.DragTarget(which, x, g), WalkedTarget(core, g, which, x));
    }
}

}  // namespace

}  // namespace kvx::test
