// The five texts of the OS Trace window's status line.

#include "traceview/StatusTexts.h"

#include "traceview/TraceWindow.h"

namespace kvx::test {
namespace {

class StatusTexts : public TraceWindow {
  protected:
    CString Text(std::size_t pane, double scale = 1.0) {
        ChartViewport viewport;
        viewport.Open(0.0, 1e9, 1e9);
        viewport.Show({0.0, 1e9 / scale, scale});
        viewport.gridTime = 250.0;
        return ComposeStatusTexts(data.engine, data.markers, viewport).at(pane);
    }
};

TEST_F(StatusTexts, TellMarkersScaleGridAndRange) {
    Open(PeriodicTrace(5));
    data.markers.SetMarker(nullptr, kMarkerStart, 2);
    data.markers.SetMarker(nullptr, kMarkerEnd, 9);
    data.markers.SetMarker(nullptr, kMarkerIndicator, 5);
    const auto time = [&](int which) {
        return std::to_string(static_cast<int>(MarkerTime(which)));
    };
    const auto length = static_cast<int>(MarkerTime(kMarkerEnd) - MarkerTime(kMarkerStart));
    EXPECT_EQ(Text(0), "Mark: " + time(kMarkerStart) + " - " + time(kMarkerEnd) + " = " +
                           std::to_string(length));
    EXPECT_EQ(Text(1), "Indicator: " + time(kMarkerIndicator));
    EXPECT_EQ(Text(3), "Grid: 250");
    service.timeText = true;
    EXPECT_EQ(Text(3), "Grid: 00:00:00.000.250");
}

TEST_F(StatusTexts, LargeScalesAreShort) {
    Open(PeriodicTrace(1));
    EXPECT_EQ(Text(2, 1.25), "Scale: * 1.250000");
    EXPECT_EQ(Text(2, 999999.9), "Scale: * 999999.900000");
    EXPECT_EQ(Text(2, 1000000.0), "Scale: * 1.000000e+06");
}

TEST_F(StatusTexts, RangeConditions) {
    Open(PeriodicTrace(1));
    for (const auto& [condition, text] :
         {std::pair{kRangeFull, "Area: Full"}, {kRangeFree, "Area: Free"}, {7, "Area: "}}) {
        service.condition = condition;
        EXPECT_EQ(Text(4), text);
    }
}

}  // namespace
}  // namespace kvx::test
