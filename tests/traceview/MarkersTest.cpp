// Markers in the window: placed, dragged, swapped, cancelled, and what the analyses make of it.

#include "traceview/TraceWindow.h"

namespace kvx::test {
namespace {

using Markers = TraceWindow;

const CRunTime* RunTimeOf(const COSTraceData& data, std::uint32_t context) {
    return data.runTime.Find(context);
}

TEST_F(Markers, OpeningPlacesAllThreeIntoTheDisplay) {
    Open(PeriodicTrace(200));
    EXPECT_EQ(service.Decoded(), 300u);
    const ChartGeometry geometry = Geometry();
    EXPECT_EQ(geometry.displayStart, 0.0);
    EXPECT_EQ(MarkerTime(kMarkerStart), 0.0);
    EXPECT_EQ(MarkerTime(kMarkerEnd), geometry.displayEnd);
    EXPECT_GT(MarkerTime(kMarkerIndicator), geometry.displayEnd / 2);
    EXPECT_DOUBLE_EQ(geometry.scale, (geometry.traceEnd - 0.0) / geometry.displayEnd);
}

TEST_F(Markers, DroppingTheEndBeforeTheStartSwapsThemAndMeasuresAnew) {
    Open(PeriodicTrace(200));
    // The start marker goes to 2100, then the end marker is dropped left of it.
    Drag(InChart(0), InChart(2110));
    EXPECT_EQ(MarkerTime(kMarkerStart), 2110.0);
    const int before = service.calls["DiscardData"];
    host.broadcasts.clear();
    Press(InChart(MarkerTime(kMarkerEnd)));
    Move(InChart(1110));
    EXPECT_EQ(MarkerTime(kMarkerEnd), 1110.0);
    EXPECT_EQ(MarkerTime(kMarkerStart), 2110.0);
    EXPECT_TRUE(host.broadcasts.empty());  // nothing is measured before the drop
    Release(InChart(1110));
    EXPECT_EQ(MarkerTime(kMarkerStart), 1110.0);
    EXPECT_EQ(MarkerTime(kMarkerEnd), 2110.0);
    EXPECT_EQ(host.broadcasts.size(), 1u);
    EXPECT_EQ(service.calls["DiscardData"], before);
    const CRunTime* const control = RunTimeOf(data, 1);
    ASSERT_NE(control, nullptr);
    EXPECT_EQ(control->Num, 10);
    EXPECT_DOUBLE_EQ(control->Total, 100.0);
    EXPECT_DOUBLE_EQ(control->Ratio, 0.1);
}

TEST_F(Markers, EscapeEndsADragWithoutEffect) {
    Open(PeriodicTrace(200));
    const double end = MarkerTime(kMarkerEnd);
    Press(InChart(end));
    Move(InChart(1110));
    EXPECT_EQ(MarkerTime(kMarkerEnd), 1110.0);
    view->SendMessage(WM_KEYDOWN, VK_ESCAPE);
    EXPECT_EQ(MarkerTime(kMarkerEnd), end);
    Move(InChart(500));
    Release(InChart(500));
    EXPECT_EQ(MarkerTime(kMarkerEnd), end);
    EXPECT_FALSE(data.markers.IsAnyDragging());
}

TEST_F(Markers, AdjustFollowsTheMarkersAndIsDisabledWithoutARange) {
    Open(PeriodicTrace(200));
    Drag(InChart(0), InChart(1110));
    Command(ids::kAdjust);
    EXPECT_EQ(Geometry().displayStart, 1110.0);
    EXPECT_EQ(Geometry().displayEnd, MarkerTime(kMarkerEnd));
    // Far enough expanded that two events do not share a column.
    for (int i = 0; i < 5; ++i) Command(ids::kExpand);
    Command(ids::kEndMarker);
    Drag(InChart(MarkerTime(kMarkerEnd)), InChart(1110));
    EXPECT_EQ(MarkerTime(kMarkerStart), MarkerTime(kMarkerEnd));
    EXPECT_FALSE(Enabled(ids::kAdjust));
}

TEST_F(Markers, CommandsAreOfferedWhereTheyMakeSense) {
    Open(PeriodicTrace(200));
    EXPECT_TRUE(Enabled(ids::kStartMarker));
    view->ScrollBy(1e6);
    EXPECT_FALSE(Enabled(ids::kStartMarker));  // it would pass the end marker
    EXPECT_TRUE(Enabled(ids::kEndMarker));
    Command(ids::kEndMarker);
    EXPECT_EQ(MarkerTime(kMarkerEnd), 20060.0);
    Command(ids::kIndicator);  // nothing after the middle: the last event
    EXPECT_EQ(data.markers.GetMarkerEvent(kMarkerIndicator), service.Decoded() - 1);
    view->OnUpdate(view, kHintTraceCleared, nullptr);
    for (const UINT command : {ids::kStartMarker, ids::kEndMarker, ids::kIndicator, ids::kAdjust,
                               ids::kExpand, ids::kReduce, ids::kSearch, ids::kDefaultOrder}) {
        EXPECT_FALSE(Enabled(command)) << command;
    }
}

}  // namespace
}  // namespace kvx::test
