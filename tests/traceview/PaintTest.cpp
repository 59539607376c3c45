// The chart as recorded drawing: every step of a paint, in its order and with its exact rectangles.

#include "framework/TipWindow.h"
#include "resources/Tables.h"
#include "support/GoldenText.h"
#include "support/RecordingGraphics.h"
#include "traceview/ChartPainter.h"
#include "traceview/TraceWindow.h"

namespace kvx::test {
namespace {

// A handler that is hidden, a task with every overlay, a system-call process, a hatched idle
// context.
ScriptedTrace Sample() {
    ScriptedTrace trace;
    const auto handler = trace.AddHandler(3, "timer", 0x1234);
    const auto control = trace.AddTask(1, "control");
    const auto server = trace.AddTask(12, "server");
    const auto idle = trace.AddIdle();
    trace.contexts[handler].shown = 0;
    trace.contexts[server].sysCallProcess = 1;
    trace.State(0, control, 1);
    trace.State(0, server, 6, host::kFlagSuspended | host::kFlagPaused);
    trace.Dispatch(100, idle, handler);
    trace.Dispatch(200, handler, control);
    trace.Call(250, control, 4, {"sig_sem", "semid=1", "ercd=0"});
    trace.Call(260, control, 99, {"vendor_call", "", ""});
    trace.State(300, control, 4);
    trace.State(300, server, 1);
    trace.Dispatch(400, control, server);
    trace.Dispatch(600, server, idle);
    return trace;
}

TEST(ChartPaint, EveryStepInItsOrder) {
    SetResourceTable(&resources::Table());
    ScriptedTraceService service(Sample());
    ScriptedHost host(service);
    service.DecodeAll();
    HostTraceSource source;
    COSTraceData data(source);
    ASSERT_EQ(data.engine.Open(nullptr), 1);
    data.contexts.Load();
    data.markers.SetMarker(nullptr, kMarkerStart, 2);
    data.markers.SetMarker(nullptr, kMarkerEnd, 8);
    data.markers.SetMarker(nullptr, kMarkerIndicator, 4);

    TraceColumns columns;
    columns.Layout(kCharWidth);
    columns.SetChartRight(840);
    ChartGeometry geometry;
    geometry.left = columns[TraceColumns::kChart].left;
    geometry.right = 840;
    geometry.traceEnd = geometry.displayEnd = 600.0;
    geometry.scale = 1.0;
    geometry.lineHeight = 18;
    geometry.charWidth = kCharWidth;
    geometry.clientHeight = 108;
    geometry.visibleLines = 5;
    geometry.lineCount = data.contexts.GetCount();

    RecordingGraphics graphics;
    CDC dc(&graphics);
    CHeaderCellPainter painter;
    COSTip tips;
    LineSelection selection;
    selection.Toggle({2, 1});
    const COSColor& colors = data.colors;
    DrawTitles(dc, painter, columns, geometry.lineHeight);
    chart::DrawTable(dc, painter, columns, geometry, data.contexts, selection,
                     colors[EColor::SysCallBack]);
    chart::DrawDropMark(dc, geometry, 0, 2);
    KeptItems kept;
    const auto items =
        BuildChart(&service, geometry, data.engine, data.contexts, data.markers, 150.0, kept);
    chart::DrawItems(dc, geometry, items, colors, tips);
    ExpectGolden("traceview/chart.txt", graphics.Text());

    // Of elements one above the other the one drawn last has the tip.
    std::uint32_t event = 0;
    EXPECT_EQ(tips.HitTest(geometry.X(260), geometry.LineCentre(1), &event), 1);
    EXPECT_EQ(event, 5u);
    EXPECT_EQ(tips.HitTest(geometry.X(350), geometry.LineCentre(1), &event), 1);
    EXPECT_EQ(service.Trace().kind[event], kEventDispatch);
    EXPECT_EQ(tips.HitTest(geometry.X(350), geometry.LineCentre(1) + 8, &event), 0);
}

// Above the line that it names, of those that are shown; a drop behind the last one stays there.
TEST(ChartPaint, TheDropMarkFollowsTheScrolledLines) {
    ChartGeometry geometry;
    geometry.right = 400;
    geometry.lineHeight = 18;
    geometry.lineCount = 12;
    geometry.firstLine = 3;
    geometry.visibleLines = 20;
    const auto drawn = [&](int line) {
        RecordingGraphics graphics;
        CDC dc(&graphics);
        chart::DrawDropMark(dc, geometry, 7, line);
        return graphics.Text();
    };
    EXPECT_EQ(drawn(3), "line 7 18 400 18 solid 3 #000000\n");
    EXPECT_EQ(drawn(5), "line 7 54 400 54 solid 3 #000000\n");
    EXPECT_EQ(drawn(12), "line 7 180 400 180 solid 3 #000000\n");
    EXPECT_EQ(drawn(99), drawn(12));
    EXPECT_EQ(drawn(2), "") << "scrolled away";
    EXPECT_EQ(drawn(-1), "");
}

TEST(GridPaint, NumbersThatWouldRunIntoEachOtherAreLeftOut) {
    ChartGeometry geometry;
    geometry.left = 100;
    geometry.right = 400;
    geometry.lineHeight = 18;
    geometry.charWidth = kCharWidth;
    geometry.lineCount = 2;
    RecordingGraphics graphics;
    CDC dc(&graphics);
    ChartItems grid;
    for (const GridLine& line : std::initializer_list<GridLine>{
             {100, -100}, {110, -99}, {140, -98}, {145, -97}, {180, 0}, {182, 1}, {200, 2}})
        grid.emplace_back(line);
    COSTip tips;
    chart::DrawItems(dc, geometry, grid, COSColor(), tips);
    const std::string text = graphics.Text();
    for (const char* drawn : {"-100", "-98", "\"0\"", "\"2\""})
        EXPECT_NE(text.find(drawn), std::string::npos) << drawn << text;
    for (const char* left : {"-99", "-97", "\"1\""})
        EXPECT_EQ(text.find(left), std::string::npos) << left;
    std::size_t lines = 0;
    for (std::size_t at = 0; (at = text.find("line", at)) != std::string::npos; ++at) ++lines;
    EXPECT_EQ(lines, grid.size()) << text;
}

TEST(TipPlace, StaysInTheWorkAreaAndAboveThePointerAtItsBottom) {
    const RECT work = {0, 0, 1000, 800};
    const SIZE size = {200, 60};
    EXPECT_EQ(PlaceTip({100, 100}, {300, 200}, size, work), (CRect{325, 350, 525, 410}));
    EXPECT_EQ(PlaceTip({0, 0}, {10, 10}, size, work).left, 0);
    EXPECT_EQ(PlaceTip({700, 100}, {290, 10}, size, work).right, 1000);
    // Above the pointer: its bottom is where the pointer is.
    EXPECT_EQ(PlaceTip({0, 0}, {300, 760}, size, work), (CRect{225, 700, 425, 760}));
}

}  // namespace
}  // namespace kvx::test
