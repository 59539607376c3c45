// The displayed part of a trace without any window: what each operation leads to, what it asks to
// be decoded, the way back, and the lines.

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "core/CoreFixture.h"
#include "traceview/model/TraceDisplay.h"

namespace kvx::test {
namespace {

using Step = ChartViewport::Step;

ChartViewport Opened() {
    ChartViewport viewport;
    viewport.Open(1000.0, 11000.0, 3000.0);
    return viewport;
}

void ExpectHolds(const ChartViewport& v) {
    EXPECT_LE(v.TraceStart(), v.DisplayStart());
    EXPECT_LE(v.DisplayStart(), v.TraceEnd());
    EXPECT_NEAR(v.DisplayEnd(), v.DisplayStart() + v.TraceSpan() / v.Scale(), 1e-6 * v.TraceSpan());
}

TEST(Viewport, OpensOnWhatIsDecoded) {
    const ChartViewport viewport = Opened();
    EXPECT_EQ(viewport.DisplayStart(), 1000.0);
    EXPECT_EQ(viewport.DisplayEnd(), 3000.0);
    EXPECT_EQ(viewport.Scale(), 5.0);
    EXPECT_EQ(viewport.gridTime, 400.0);
    EXPECT_FALSE(viewport.Previous() || viewport.Next());
    // Traces of one moment, or of which nothing is decoded, have a display too.
    for (const auto& [start, end, analysed] :
         {std::tuple{5.0, 5.0, 5.0}, {5.0, 9.0, 5.0}, {0.0, 0.0, 0.0}}) {
        ChartViewport odd;
        odd.Open(start, end, analysed);
        ExpectHolds(odd);
        EXPECT_LT(odd.DisplayStart(), odd.DisplayEnd());
    }
}

TEST(Viewport, ZoomsAboutTheAnchorAndScrollsWithinTheTrace) {
    ChartViewport viewport = Opened();
    viewport.Show(viewport.Expanded(2000.0));
    EXPECT_DOUBLE_EQ(viewport.Scale(), 7.5);
    EXPECT_DOUBLE_EQ((2000.0 - viewport.DisplayStart()) * 1.5, 1000.0);
    viewport.Show(viewport.ScrolledBy(1e9));
    EXPECT_EQ(viewport.DisplayStart(), 11000.0);
    viewport.Show(viewport.ScrolledBy(-1e9));
    EXPECT_EQ(viewport.DisplayStart(), 1000.0);
    // A scale of 1.2 reduced by 1.5 is the whole trace exactly; no zoom leaves the doubles.
    viewport.expandRate = 1.2;
    viewport.Show(*viewport.Between(1000.0, 11000.0));
    viewport.Show(viewport.Expanded(1000.0));
    viewport.Show(viewport.Reduced(1000.0));
    EXPECT_EQ(viewport.Scale(), 1.0);
    viewport.expandRate = 1e300;
    for (int i = 0; i < 3; ++i) viewport.Show(viewport.Expanded(viewport.DisplayStart()));
    EXPECT_TRUE(std::isfinite(viewport.Scale()));
    EXPECT_FALSE(viewport.Between(5.0, 5.0) || viewport.Between(6.0, 5.0));
}

TEST(Viewport, GoesBackOverZoomsAndJumps) {
    ChartViewport viewport = Opened();
    const auto back = [&] { viewport.Show(*viewport.Previous()); };
    const auto forward = [&] { viewport.Show(*viewport.Next()); };
    // Three zooms are one step, a scroll ends it, and the zoom after it is another one.
    for (int i = 0; i < 3; ++i) viewport.Show(viewport.Expanded(2000.0));
    viewport.Show(viewport.ScrolledBy(100.0));
    const double scrolled = viewport.DisplayStart();
    viewport.Show(viewport.Expanded(2000.0));
    viewport.Show(viewport.CentredOn(9000.0));
    EXPECT_EQ(viewport.Middle(), 9000.0);
    back();
    back();
    EXPECT_EQ(viewport.DisplayStart(), scrolled);
    back();
    EXPECT_EQ(viewport.DisplayEnd(), 3000.0);
    EXPECT_FALSE(viewport.Previous());
    forward();
    EXPECT_EQ(viewport.DisplayStart(), scrolled);
    forward();
    forward();
    EXPECT_EQ(viewport.Middle(), 9000.0);
    EXPECT_FALSE(viewport.Next());
    // Another zoom from there ends the way forward.
    back();
    viewport.Show(viewport.Reduced(9000.0));
    EXPECT_FALSE(viewport.Next());
    // What stays where it is leaves nothing to go back over.
    ChartViewport whole;
    whole.Open(0.0, 10.0, 10.0);
    whole.Show(whole.Reduced(0.0));
    EXPECT_FALSE(whole.Previous());
    viewport.Open(0.0, 1.0, 1.0);
    EXPECT_FALSE(viewport.Previous() || viewport.Next());
}

TEST(Viewport, HoldsInAnyOrderOfOperations) {
    std::mt19937 random(4);
    const auto anywhere = [&] { return std::uniform_real_distribution(0.0, 12000.0)(random); };
    ChartViewport v = Opened();
    for (int i = 0; i < 5000 && !testing::Test::HasFailure(); ++i) {
        std::optional<ChartViewport::Display> next;
        switch (random() % 7) {
            case 0:
                next = v.Expanded(v.DisplayStart() + (v.DisplayEnd() - v.DisplayStart()) / 3);
                break;
            case 1:
                next = v.Reduced(v.DisplayStart());
                break;
            case 2:
                next = v.ScrolledBy(anywhere() - 6000.0);
                break;
            case 3:
                next = v.CentredOn(anywhere());
                break;
            case 4:
                next = v.Between(std::max(1000.0, std::min(anywhere(), 11000.0)), 11000.0);
                break;
            case 5:
                next = v.Previous();
                break;
            default:
                next = v.Next();
                break;
        }
        if (!next) continue;
        const double start = v.DisplayStart();
        EXPECT_EQ(v.DisplayStart(), start);  // asking changes nothing
        v.Show(*next);
        ExpectHolds(v);
        EXPECT_GE(v.BarPosition(), 0);
        EXPECT_LE(v.BarPosition(), ChartViewport::kBarEnd);
    }
}

TEST(Viewport, ShowsLinesAsFarAsThereAreAny) {
    ChartViewport viewport = Opened();
    viewport.SetCell(8, 20);
    viewport.SetLineCount(30);
    viewport.SetHeight(219);
    EXPECT_EQ(viewport.VisibleLines(), 9);
    EXPECT_EQ(viewport.ScrollLines(-100), -21);
    EXPECT_EQ(viewport.FirstLine(), 21);
    viewport.SetHeight(20 * 21);  // earlier lines are pulled in
    EXPECT_EQ(viewport.FirstLine(), 10);
    EXPECT_EQ(viewport.ScrollLines(3), 3);
    EXPECT_EQ(viewport.ScrollLines(100), 7);
    viewport.SetLineCount(2);
    EXPECT_EQ(viewport.ScrollLines(-1), 0);
    viewport.SetHeight(10);
    EXPECT_EQ(viewport.VisibleLines(), -1);
}

// Sixty calls, ten counts apart, of which a part is decoded.
Core LongTrace(int events) {
    ScriptedTrace trace;
    const auto task = trace.AddTask(1, "A");
    for (int i = 0; i < events; ++i) trace.Call(10 * (i + 1), task, 1, {"call", "", ""});
    return Core(trace, false);
}

TEST(TraceDisplay, DecodesWhatItComesToShowAndStaysWhenThatIsStopped) {
    Core core = LongTrace(5000);
    TraceDisplay display(core.data, core.view);
    ASSERT_TRUE(display.Open());
    const std::uint32_t opened = core.service.Decoded();
    EXPECT_TRUE(display.GoTo(display.viewport.Expanded(10.0)));
    EXPECT_EQ(core.service.Decoded(), opened);
    const double start = display.viewport.DisplayStart();
    core.view.stopAtPoll = 1;
    EXPECT_EQ(display.ScrollBy(1e9), 0.0);
    EXPECT_EQ(display.viewport.DisplayStart(), start);
    EXPECT_LT(core.service.Decoded(), core.service.Trace().Count());
    core.view.stopAtPoll = 0;
    EXPECT_GT(display.ScrollBy(1e9), 0.0);
    EXPECT_EQ(core.service.Decoded(), core.service.Trace().Count());
    // A display beyond the end of the trace is a position to come back to, as any.
    host::OSTracePosition position;
    ASSERT_EQ(display.GetPosition(position), S_OK);
    display.GoTo(*display.viewport.Between(10.0, 100.0));
    EXPECT_EQ(display.SetPosition(position), S_OK);
    EXPECT_EQ(display.viewport.DisplayStart(), position.displayStart);
    position.displayEnd = 1e9;
    EXPECT_EQ(display.SetPosition(position), E_INVALIDARG);
    // From the whole trace on, whatever is nearer; the grid has a width.
    const ChartGeometry whole = display.viewport.Geometry();
    const double span = whole.traceEnd - whole.traceStart;
    position.displayStart = whole.traceStart;
    for (const double share : {1.0, 0.75, 0.5}) {
        position.displayEnd = whole.traceStart + share * span;
        EXPECT_EQ(display.SetPosition(position), S_OK) << share;
        EXPECT_NEAR(display.viewport.Scale(), 1 / share, 1e-6);
    }
    for (const double grid : {0.0, -1.0}) {
        position.gridTime = grid;
        EXPECT_EQ(display.SetPosition(position), E_INVALIDARG) << grid;
    }
}

// While the end marker stands left of the start marker in a drag, records are decoded: it stays
// the end marker, and only the drop measures.
TEST(TraceDisplay, AMarkerIsCarriedAcrossDecodingAndBackAgain) {
    Core core = LongTrace(2000);
    TraceDisplay display(core.data, core.view);
    display.viewport.SetChart(0, 601);
    ASSERT_TRUE(display.Open());
    COSMarker& markers = core.data.markers;
    markers.SetMarker(nullptr, kMarkerStart, 100);
    core.data.sysCalls.Sort(COSSysCallList::No, 0);
    core.data.sysCalls.Sort(COSSysCallList::No, 0);
    const int calls = core.data.sysCalls.EntryCount();
    const std::uint32_t last = core.data.sysCalls.RowHistoryIndex(0);
    const double end = markers.GetMarkerTime(kMarkerEnd);
    const auto carry = [&] {
        markers.BeginDrag(kMarkerEnd);
        ASSERT_TRUE(display.DragMarker(kMarkerEnd, 3));
        const double dragged = markers.GetMarkerTime(kMarkerEnd);
        ASSERT_LT(dragged, markers.GetMarkerTime(kMarkerStart));
        display.ScrollBy(2000.0);
        EXPECT_EQ(markers.GetMarkerTime(kMarkerEnd), dragged);
        EXPECT_EQ(core.data.sysCalls.EntryCount(), calls);
    };
    carry();
    display.CancelMarkerDrag(kMarkerEnd);
    EXPECT_EQ(markers.GetMarkerTime(kMarkerEnd), end);
    EXPECT_FALSE(markers.IsAnyDragging());
    EXPECT_EQ(core.data.sysCalls.EntryCount(), calls);
    EXPECT_EQ(core.data.sysCalls.RowHistoryIndex(0), last);  // sorted as it was
    display.ScrollBy(-1e9);
    carry();
    display.DropMarkers();
    EXPECT_LT(markers.GetMarkerTime(kMarkerStart), markers.GetMarkerTime(kMarkerEnd));
    EXPECT_NE(core.data.sysCalls.EntryCount(), calls);
}

}  // namespace
}  // namespace kvx::test
