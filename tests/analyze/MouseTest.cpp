// Resizing columns, and clicks on rows that move the indicator.

#include "analyze/AnalyzeWindow.h"
#include "framework/HostWorkspaceStore.h"

namespace kvx::test {
namespace {

using Mouse = AnalyzeWindow;
constexpr std::size_t kMax = CRunTimeAnalysis::Max;
constexpr std::size_t kMin = CRunTimeAnalysis::Min;

std::string Stored(MemoryStore& store, COSAnalyzeView& view) {
    CWorkspaceStore writer(host::ModuleHost());
    view.SaveSettings(writer, "Test");
    return store.texts["TestView"];
}

TEST_F(Mouse, ADraggedEdgeResizesItsColumn) {
    OpenTrace(AnalyzeTrace(3));
    OpenWindow();
    const int edge = RightEdge(kRunTimeWidths, 3);
    Press(*view, {edge, rowHeight / 2});
    EXPECT_EQ(CWnd::GetCapture(), view);
    Move(*view, {edge + 50, 3 * rowHeight});
    EXPECT_EQ(TextsAt(RightEdge(kRunTimeWidths, 3)).size(),
              5u);  // nothing changes before the release
    EXPECT_FALSE(instance->AreSettingsModified());
    Release(*view, {edge + 50, 3 * rowHeight});
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    EXPECT_TRUE(instance->AreSettingsModified());
    EXPECT_EQ(TextsAt(edge + 50).size(), 5u);  // "Num" begins there now
    const int characters = (12 * charWidth + 50) / charWidth;
    EXPECT_EQ(Stored(store, *view), FormatText("0,5,8,5,%d,7,22,22,22,22,8,18,5,12,8,22,22,22,7,13,"
                                               "35,35,22",
                                               characters));
    // The press did not sort.
    EXPECT_EQ(data.runTime.SortColumn(), -1);
}

TEST_F(Mouse, AColumnKeepsThreePixelsAndEscapeKeepsItAll) {
    OpenTrace(AnalyzeTrace(3));
    OpenWindow();
    const int left = RightEdge(kRunTimeWidths, 0);
    const int edge = RightEdge(kRunTimeWidths, 1);
    Press(*view, {edge, 1});
    Move(*view, {edge - 30, 1});
    Key(VK_ESCAPE);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    Release(*view, {edge - 30, 1});
    EXPECT_EQ(Stored(store, *view), kDefaults);
    EXPECT_FALSE(instance->AreSettingsModified());

    Drag(*view, {edge, 1}, {left - 100, 1});
    EXPECT_EQ(TextsAt(left + CColumnTable::kLeastWidth), (std::vector<std::string>{"1", "2"}));
    EXPECT_EQ(Stored(store, *view), "0,5,0" + std::string(kDefaults).substr(5));
    // Beyond the window's edge there is no bound.
    Drag(*view, {left + CColumnTable::kLeastWidth, 1}, {5000, 1});
    EXPECT_EQ(TextsAt(5000), (std::vector<std::string>{"1", "2"}));
    EXPECT_TRUE(IsBarShown(WS_HSCROLL));
}

TEST_F(Mouse, ResizingWorksWhereTheTableIsScrolledSideways) {
    OpenTrace(AnalyzeTrace(3));
    OpenWindow(600, 200);
    view->SendMessage(WM_HSCROLL, MakeScroll(SB_RIGHT, 0));
    const int shift = view->GetScrollPos(SB_HORZ) * charWidth;
    const int edge = RightEdge(kRunTimeWidths, CRunTimeAnalysis::Ratio) - shift;
    Drag(*view, {edge, 1}, {edge - 2 * charWidth, 1});
    EXPECT_EQ(Stored(store, *view), "0,5,8,5,12,7,22,22,22,22,6,18,5,12,8,22,22,22,7,13,35,35,22");
    // The table is narrower: the window still shows its end.
    EXPECT_EQ(view->GetScrollPos(SB_HORZ) * charWidth, shift - 2 * charWidth);
}

TEST_F(Mouse, MaxAndMinVisitTheirEventsInTurn) {
    // The control task runs twice as long in the second and the fourth period.
    ScriptedTrace trace;
    const auto control = trace.AddTask(1, "control");
    const auto idle = trace.AddIdle();
    for (int i = 0; i < 4; ++i) {
        trace.Dispatch(100 + i * 100, idle, control);
        if (i == 0) trace.State(110, control, 1);  // nothing keeps it from running
        trace.Dispatch(100 + i * 100 + (i % 2 ? 60 : 30), control, idle);
    }
    OpenTrace(std::move(trace));
    OpenWindow();
    host.broadcasts.clear();
    for (const double time : {200.0, 400.0, 200.0}) {
        ClickCell(kRunTimeWidths, kMax, 0);
        EXPECT_EQ(Indicator(), time);
    }
    for (const double time : {100.0, 300.0, 100.0}) {
        ClickCell(kRunTimeWidths, kMin, 0);
        EXPECT_EQ(Indicator(), time);
    }
    EXPECT_EQ(host.broadcasts.size(), 6u);
    // The cell at whose event the indicator stands is inverted; other cells do nothing.
    EXPECT_NE(
        Drawing().find(FormatText("invert %d %d ", RightEdge(kRunTimeWidths, kMax), rowHeight)),
        std::string::npos);
    ClickCell(kRunTimeWidths, CRunTimeAnalysis::Avg, 0);
    ClickCell(kRunTimeWidths, kMax, 2);  // below the last row
    EXPECT_EQ(host.broadcasts.size(), 6u);

    // It waited longest for its second and fourth run.
    Command(ids::kRdyToRun);
    for (const double time : {200.0, 400.0}) {
        ClickCell(kRdyRunWidths, 3, 0);
        EXPECT_EQ(Indicator(), time);
    }
    EXPECT_NE(Drawing().find(FormatText("invert %d %d %d %d", RightEdge(kRdyRunWidths, 2),
                                        rowHeight, RightEdge(kRdyRunWidths, 3), 2 * rowHeight)),
              std::string::npos);
    ClickCell(kRdyRunWidths, 4, 0);
    EXPECT_EQ(Indicator(), 300.0);
}

TEST_F(Mouse, CellsAreWhereTheyAreSeen) {
    OpenTrace(AnalyzeTrace(3));
    OpenWindow(600, 200);
    view->SendMessage(WM_HSCROLL, MakeScroll(SB_THUMBTRACK, 40));
    const int shift = 40 * charWidth;
    const CPoint min = Cell(kRunTimeWidths, kMin, kLoggerLine);
    const CPoint avg = Cell(kRunTimeWidths, CRunTimeAnalysis::Avg, kLoggerLine);
    Click(*view, {min.x - shift, min.y});
    EXPECT_EQ(Indicator(), 140.0);
    data.markers.SetMarker(nullptr, kMarkerIndicator, 0);
    Click(*view, {avg.x - shift, avg.y});
    EXPECT_EQ(Indicator(), 100.0);
}

TEST_F(Mouse, ASystemCallIsGoneToByItsRow) {
    OpenTrace(AnalyzeTrace(50));
    OpenWindow();
    Command(ids::kSystemCall);
    ShowRows(10);
    Key(VK_NEXT);
    ASSERT_EQ(FirstRow(), 11);
    ClickCell(kSysCallWidths, 2, 3);
    EXPECT_EQ(Indicator(), 100 + 14 * 100 + 25);
    EXPECT_EQ(FirstRow(), 11);
    EXPECT_NE(Drawing().find(FormatText("invert 0 %d %d %d", 4 * rowHeight,
                                        RightEdge(kSysCallWidths, 4), 5 * rowHeight)),
              std::string::npos);
    // Also the row that is only partly there, without scrolling to it.
    ClickCell(kSysCallWidths, 0, 10);
    EXPECT_EQ(Indicator(), 100 + 21 * 100 + 25);
    EXPECT_EQ(FirstRow(), 11);
}

TEST_F(Mouse, TheIndicatorIsFollowedWhereAnotherViewPutsIt) {
    OpenTrace(AnalyzeTrace(100));
    OpenWindow();
    Command(ids::kSystemCall);
    ShowRows(10);
    const auto put = [&](int period, std::uint32_t event) {
        data.markers.SetMarker(nullptr, kMarkerIndicator,
                               static_cast<std::uint32_t>(period) * kEventsPerPeriod + event);
    };
    put(50, kCallOfPeriod);
    EXPECT_EQ(FirstRow(), 45);
    put(54, kCallOfPeriod);  // shown already
    EXPECT_EQ(FirstRow(), 45);
    put(55, kCallOfPeriod);
    EXPECT_EQ(FirstRow(), 50);
    put(99, kCallOfPeriod);
    EXPECT_EQ(FirstRow(), 90);
    put(20, 0);  // not a call: the rows stay
    EXPECT_EQ(FirstRow(), 90);
    // Sorted the other way round, it is another row.
    ClickCell(kSysCallWidths, 4, -1);
    ClickCell(kSysCallWidths, 4, -1);
    put(99, kCallOfPeriod);
    EXPECT_EQ(FirstRow(), 0);
    put(20, kCallOfPeriod);
    EXPECT_EQ(FirstRow(), 74);
    // Choosing the mode brings it back into sight.
    Key(VK_HOME);
    Command(ids::kSystemCall);
    EXPECT_EQ(FirstRow(), 74);
    // In another mode nothing follows.
    Command(ids::kRunTime);
    ShowRows(2);
    put(50, kCallOfPeriod);
    EXPECT_EQ(FirstRow(), 0);
}

// A view that follows the indicator may decode more, and then everything is measured anew while the
// click is still being handled.
TEST_F(Mouse, AnalysesMayBeRebuiltWhileTheIndicatorMoves) {
    OpenTrace(AnalyzeTrace(50));
    OpenWindow();
    bool rebuilt = false;
    const auto deliver = host.onBroadcast;
    host.onBroadcast = [&](const EventRecord& record) {
        if (!std::exchange(rebuilt, true)) data.markers.Rebuild(nullptr, true);
        deliver(record);
    };
    ClickCell(kRunTimeWidths, kMax, 1);
    EXPECT_TRUE(rebuilt);
    EXPECT_EQ(Indicator(), 110.0);
    ClickCell(kRunTimeWidths, kMax, 1);
    EXPECT_EQ(Indicator(), 110.0);  // the records are new: it begins with the first event
    ClickCell(kRunTimeWidths, kMax, 1);
    EXPECT_EQ(Indicator(), 210.0);
}

}  // namespace
}  // namespace kvx::test
