// Scrolling by rows and by characters, and the window's size.

#include "analyze/AnalyzeWindow.h"

namespace kvx::test {
namespace {

using Scroll = AnalyzeWindow;

TEST_F(Scroll, RowsByKeysBarAndWheel) {
    OpenTrace(AnalyzeTrace(100));
    OpenWindow();
    Command(ids::kSystemCall);
    ShowRows(10);
    SCROLLINFO info;
    view->GetScrollInfo(SB_VERT, &info);
    EXPECT_EQ(info.nMax, 100);
    EXPECT_EQ(info.nPage, 11u);

    Key(VK_DOWN);
    Key(VK_DOWN);
    Key(VK_UP);
    EXPECT_EQ(FirstRow(), 1);
    Key(VK_NEXT);
    EXPECT_EQ(FirstRow(), 12);
    EXPECT_EQ(Front(Texts(kSysCallWidths, 0)), "13");
    EXPECT_EQ(Texts(kSysCallWidths, 0).size(), 11u);  // one more than those that fit
    Key(VK_PRIOR);
    EXPECT_EQ(FirstRow(), 1);
    Key(VK_END);
    EXPECT_EQ(FirstRow(), 90);
    EXPECT_EQ(Back(Texts(kSysCallWidths, 0)), "100");
    Key(VK_DOWN);
    EXPECT_EQ(FirstRow(), 90);
    Key(VK_HOME);
    EXPECT_EQ(FirstRow(), 0);
    for (const UINT code : {SB_THUMBTRACK, SB_THUMBPOSITION}) {
        view->SendMessage(WM_VSCROLL, MakeScroll(code, 37));
        EXPECT_EQ(FirstRow(), 37);
        view->SendMessage(WM_VSCROLL, MakeScroll(SB_TOP, 0));
    }
    view->SendMessage(WM_MOUSEWHEEL, MakeWheel(0, -360));
    EXPECT_EQ(FirstRow(), 1);
}

TEST_F(Scroll, EveryModeKeepsItsOwnFirstRow) {
    OpenTrace(AnalyzeTrace(100));
    OpenWindow();
    ShowRows(3);
    Key(VK_END);
    EXPECT_EQ(FirstRow(), 2);  // five contexts
    Command(ids::kRdyToRun);
    EXPECT_FALSE(IsBarShown(WS_VSCROLL));  // two tasks
    Key(VK_END);
    Command(ids::kSystemCall);
    EXPECT_EQ(FirstRow(), 0);
    Key(VK_END);
    EXPECT_EQ(FirstRow(), 97);
    Command(ids::kRunTime);
    EXPECT_EQ(FirstRow(), 2);
    EXPECT_EQ(Names(), (std::vector<std::string>{"logger", "Idle", "Unknown"}));
}

TEST_F(Scroll, TheLastPageStaysFull) {
    OpenTrace(AnalyzeTrace(100));
    OpenWindow();
    Command(ids::kSystemCall);
    ShowRows(5);
    Key(VK_END);
    EXPECT_EQ(FirstRow(), 95);
    ShowRows(20);
    EXPECT_EQ(FirstRow(), 80);
    ShowRows(5);
    EXPECT_EQ(FirstRow(), 80);
    // Fewer rows than before: the first row comes back into the table.
    data.markers.SetMarker(nullptr, kMarkerEnd, 10 * kEventsPerPeriod - 1);
    EXPECT_EQ(FirstRow(), 5);
}

TEST_F(Scroll, OneRowIsPaintedInAWindowOfOneRow) {
    OpenTrace(AnalyzeTrace(3));
    OpenWindow();
    ShowRows(0);
    EXPECT_EQ(Names(), std::vector<std::string>{"timer"});
    Resize(2000, 1);
    Key(VK_END);
    Key(VK_HOME);
    ShowRows(4);
    EXPECT_EQ(Names().size(), 5u);
}

TEST_F(Scroll, ColumnsByCharacters) {
    OpenTrace(AnalyzeTrace(20));
    OpenWindow(600, 200);
    const int total = RightEdge(kRunTimeWidths, 10);
    const int client = view->GetClientRect().Width();
    ASSERT_LT(client, total);
    EXPECT_TRUE(IsBarShown(WS_HSCROLL));
    SCROLLINFO info;
    view->GetScrollInfo(SB_HORZ, &info);
    const int maximum = (total - client) / charWidth + 1;
    EXPECT_EQ(info.nMax, maximum);
    EXPECT_EQ(Front(Names()), "timer");

    const auto position = [&] { return view->GetScrollPos(SB_HORZ); };
    Key(VK_RIGHT);
    Key(VK_RIGHT);
    Key(VK_LEFT);
    EXPECT_EQ(position(), 1);
    const int left = RightEdge(kRunTimeWidths, 2);
    EXPECT_EQ(Front(TextsAt(left - charWidth)), "timer");
    view->SendMessage(WM_HSCROLL, MakeScroll(SB_PAGERIGHT, 0));
    EXPECT_EQ(position(), 1 + client / charWidth);
    view->SendMessage(WM_HSCROLL, MakeScroll(SB_PAGELEFT, 0));
    EXPECT_EQ(position(), 1);
    view->SendMessage(WM_HSCROLL, MakeScroll(SB_THUMBTRACK, 17));
    EXPECT_EQ(position(), 17);
    view->SendMessage(WM_HSCROLL, MakeScroll(SB_RIGHT, 0));
    EXPECT_EQ(position(), maximum);
    // The last column ends within the window, and the strip beside it reaches to the right edge.
    EXPECT_LE(total - maximum * charWidth, client);
    EXPECT_GE(total - maximum * charWidth + charWidth, client);
    Key(VK_RIGHT);
    EXPECT_EQ(position(), maximum);
    // Titles are where they are seen.
    const CPoint name = Cell(kRunTimeWidths, CRunTimeAnalysis::Total, -1);
    Click(*view, {name.x - maximum * charWidth, name.y});
    EXPECT_EQ(data.runTime.SortColumn(), CRunTimeAnalysis::Total);
    view->SendMessage(WM_HSCROLL, MakeScroll(SB_LEFT, 0));
    EXPECT_EQ(position(), 0);
}

TEST_F(Scroll, PositionFitsTheTableAndTheWindow) {
    OpenTrace(AnalyzeTrace(20));
    OpenWindow(600, 200);
    view->SendMessage(WM_HSCROLL, MakeScroll(SB_RIGHT, 0));
    const int far = view->GetScrollPos(SB_HORZ);
    Resize(900, 200);
    EXPECT_LT(view->GetScrollPos(SB_HORZ), far);
    EXPECT_GT(view->GetScrollPos(SB_HORZ), 0);
    const int shift = view->GetScrollPos(SB_HORZ) * charWidth;
    EXPECT_EQ(Front(TextsAt(RightEdge(kRunTimeWidths, 2) - shift)), "timer");
    Resize(2000, 200);
    EXPECT_FALSE(IsBarShown(WS_HSCROLL));
    EXPECT_EQ(Front(Names()), "timer");
    Resize(600, 200);
    view->SendMessage(WM_HSCROLL, MakeScroll(SB_RIGHT, 0));
    Command(ids::kSystemCall);
    EXPECT_EQ(view->GetScrollPos(SB_HORZ), 0);
    EXPECT_EQ(Front(Texts(kSysCallWidths, 0)), "1");
    // Without a trace there is nothing to scroll.
    data.engine.Clear(nullptr, 1);
    EXPECT_FALSE(IsBarShown(WS_HSCROLL));
    EXPECT_FALSE(IsBarShown(WS_VSCROLL));
    Key(VK_RIGHT);
    Key(VK_DOWN);
    EXPECT_NE(Drawing().find("clip 0 0 "), std::string::npos);
}

}  // namespace
}  // namespace kvx::test
