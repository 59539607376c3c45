// What stands in a tip's window, and where.

#include "framework/TipWindow.h"

#include "platform/drawing/ClientDC.h"
#include "platform/windows/WindowState.h"
#include "traceview/TraceWindow.h"

namespace kvx::test {
namespace {

constexpr COLORREF kPaper = RGB(255, 255, 200);

// Of the pixels of a window that are not paper.
CRect Inked(const CWnd& window, int top, int bottom) {
    const auto surface = WindowState::Of(&window)->CurrentSurface();
    CRect ink(window.GetClientRect().Width(), bottom, 0, 0);
    for (int y = top; y < bottom; ++y) {
        for (int x = 0; x < window.GetClientRect().Width(); ++x) {
            if (surface->At(x, y) == kPaper) continue;
            ink.left = std::min<int>(ink.left, x);
            ink.right = std::max<int>(ink.right, x + 1);
            ink.top = std::min<int>(ink.top, y - top);
            ink.bottom = std::max<int>(ink.bottom, y - top + 1);
        }
    }
    return ink;
}

TEST_F(TraceWindow, ATipsLinesBeginAtItsCornerOneBelowTheOther) {
    Open(PeriodicTrace(1));
    CFont font;
    font.CreatePointFont(110, "Courier New");
    CTipWindow tip;
    ASSERT_TRUE(tip.CreateTip(*view));
    tip.Show(*view, &font, {"HH", "", "HH"}, kPaper, {200, 100});

    CClientDC dc(&tip);
    dc.SelectObject(&font);
    const SIZE line = dc.GetTextExtent("HH");
    const CRect client = tip.GetClientRect();
    EXPECT_GE(client.Width(), line.cx);
    EXPECT_GE(client.Height(), 3 * line.cy);

    const int pitch = static_cast<int>(line.cy);
    const CRect first = Inked(tip, 0, pitch);
    const CRect third = Inked(tip, 2 * pitch, 3 * pitch);
    EXPECT_EQ(first, third) << "an empty line is as high as any";
    EXPECT_GE(first.left, 0);
    EXPECT_TRUE(Inked(tip, pitch, 2 * pitch).IsRectEmpty());
    EXPECT_TRUE(Inked(tip, 3 * pitch, client.Height()).IsRectEmpty());

    // The same text at the corner of a window.
    dc.FillSolidRect(client, kPaper);
    dc.SetBkMode(TRANSPARENT);
    dc.TextOut(0, 0, "HH");
    EXPECT_EQ(Inked(tip, 0, pitch), first);
    tip.DestroyWindow();
}

TEST_F(TraceWindow, WithoutATraceNothingScrolls) {
    Open(PeriodicTrace(50));
    EXPECT_TRUE(view->GetStyle() & WS_HSCROLL);
    service.available = false;
    view->OnUpdate(view, kHintTraceReady, nullptr);
    EXPECT_FALSE(view->GetStyle() & WS_HSCROLL);
    EXPECT_FALSE(view->GetStyle() & WS_VSCROLL);
}

// A host may send a command that is not offered.
TEST_F(TraceWindow, WithoutATraceCommandsAskNothing) {
    Open(PeriodicTrace(50));
    view->OnUpdate(view, kHintTraceCleared, nullptr);
    service.calls.clear();
    for (const UINT command :
         {ids::kSearch, ids::kSearchNext, ids::kSearchPrevious, ids::kDefaultOrder, ids::kExpand,
          ids::kReduce, ids::kAdjust, ids::kStartMarker, ids::kEndMarker, ids::kIndicator})
        instance->OnCommand(command);
    for (const char* operation :
         {"SearchFirst", "SearchNext", "SearchPrevious", "ResetContextOrder", "AnalyzeRecords"})
        EXPECT_EQ(service.calls[operation], 0) << operation;
}

}  // namespace
}  // namespace kvx::test
