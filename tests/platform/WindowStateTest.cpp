// What the front keeps of windows, whatever the toolkit: invalid parts, painting, order of
// destruction, scroll bars, frames, capture, batches of moves.

#include <gtest/gtest.h>

#include "platform/base/SystemInfo.h"
#include "platform/windows/DeferWindowPos.h"
#include "platform/windows/View.h"
#include "support/FakeBackend.h"

namespace {

using Log = std::vector<std::string>;
constexpr RECT kPlace{0, 0, 100, 80};

class PaintedView : public CView {
  public:
    explicit PaintedView(Log& log) : log_(log) {}
    ~PaintedView() override { log_.push_back("deleted"); }
    bool nest = false;
    RECT painted;
    Log& Lines() { return log_; }

    void OnDraw(CDC* dc) override {
        log_.push_back("draw");
        dc->FillSolidRect(10, 10, 5, 5, RGB(255, 0, 0));
        if (nest) {
            nest = false;
            Invalidate();
            UpdateWindow();  // inside its own painting: later
        }
    }

  protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {
            ON_WM_ERASEBKGND<&PaintedView::OnErase>(),
            ON_WM_DESTROY<&PaintedView::OnGone>(),
            ON_WM_CAPTURECHANGED<&PaintedView::OnCaptureLost>(),
            ON_WM_SIZE<&PaintedView::OnResize>(),
        };
        static const MessageMap kMap{&CView::GetMessageMap(), kEntries};
        return kMap;
    }
    bool OnErase(CDC* dc) {
        log_.push_back("erase");
        return OnEraseBkgnd(dc);
    }
    void OnGone() { log_.push_back(GetParent() ? "destroy" : "destroy, orphaned"); }
    void OnCaptureLost() { log_.push_back("capture lost"); }
    void OnResize(UINT, int cx, int cy) {
        log_.push_back("size " + std::to_string(cx) + "x" + std::to_string(cy));
    }

  private:
    Log& log_;
};

class WindowStateTest : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(top.Create(WS_POPUP | WS_VISIBLE, kPlace, nullptr, 0));
        view = new PaintedView(log);
        ASSERT_TRUE(view->Create(WS_CHILD | WS_VISIBLE, kPlace, &top, 1));
        log.clear();
    }
    void TearDown() override { top.DestroyWindow(); }
    std::shared_ptr<const kvx::Surface> Paint() { return backend.windows.Paint(view->m_hWnd); }
    kvx::test::FakeBackend backend;
    CWnd top;
    Log log;
    PaintedView* view = nullptr;
};

TEST_F(WindowStateTest, OnlyWhatIsInvalidIsPainted) {
    auto picture = Paint();
    EXPECT_EQ(log, (Log{"erase", "draw"}));
    EXPECT_EQ(picture->Size(), (SIZE{100, 80}));
    EXPECT_EQ(picture->At(12, 12), RGB(255, 0, 0));
    EXPECT_EQ(picture->At(50, 50), GetSysColor(COLOR_WINDOW));
    Paint();
    EXPECT_EQ(log.size(), 2u) << "an uncovered window shows its surface again";

    const RECT part{12, 0, 60, 12};
    view->InvalidateRect(&part, false);
    EXPECT_EQ(backend.windows.At(view->m_hWnd).presented, part);
    Paint();
    EXPECT_EQ(log, (Log{"erase", "draw", "draw"})) << "without erasing";
    view->Invalidate();
    view->ValidateRect(nullptr);
    Paint();
    EXPECT_EQ(log.size(), 3u);
}

TEST_F(WindowStateTest, PaintingIsClippedToTheInvalidPart) {
    Paint();
    {
        CClientDC dc(view);
        dc.FillSolidRect(view->GetClientRect(), RGB(0, 0, 255));
    }
    EXPECT_EQ(backend.windows.At(view->m_hWnd).presented, kPlace) << "the screen follows";
    const RECT part{12, 10, 13, 20};
    view->InvalidateRect(&part, true);
    const auto picture = Paint();
    EXPECT_EQ(picture->At(12, 14), RGB(255, 0, 0));
    EXPECT_EQ(picture->At(12, 15), GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(picture->At(13, 14), RGB(0, 0, 255));
    EXPECT_EQ(picture->At(12, 20), RGB(0, 0, 255));
}

TEST_F(WindowStateTest, InvertedTwiceIsAsBefore) {
    const kvx::Surface before = *Paint();
    for (int i = 0; i < 2; ++i) {
        CClientDC dc(view);
        dc.PatBlt(30, 0, 2, 80, DSTINVERT);
        EXPECT_EQ(dc.PatBlt(0, 40, 100, 3, PATINVERT), true);
    }
    const auto after = Paint();
    for (int y = 0; y < 80; ++y)
        for (int x = 0; x < 100; ++x) ASSERT_EQ(after->At(x, y), before.At(x, y));
}

TEST_F(WindowStateTest, AnotherRatioMakesTheSurfaceAnew) {
    Paint();
    log.clear();
    backend.windows.ratio = 1.5;
    const auto picture = Paint();
    EXPECT_EQ(log, (Log{"erase", "draw"})) << "painted, without a word to the window";
    EXPECT_EQ(picture->Size(), (SIZE{100, 80}));
    EXPECT_EQ(picture->DeviceSize(), (SIZE{150, 120}));
    EXPECT_EQ(picture->At(15, 15), RGB(255, 0, 0));
    EXPECT_EQ(picture->At(22, 22), RGB(255, 0, 0));
    EXPECT_EQ(picture->At(23, 22), GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(view->GetClientRect(), kPlace) << "logical as before";
    EXPECT_EQ(Paint(), picture);
    EXPECT_EQ(log.size(), 2u);
    backend.windows.ratio = 1;
    EXPECT_EQ(Paint()->DeviceSize(), (SIZE{100, 80}));
    EXPECT_EQ(log.size(), 4u);
}

TEST_F(WindowStateTest, MovingToOtherPixelsPaintsAgain) {
    backend.windows.ratio = 1.5;
    Paint();
    log.clear();
    view->MoveWindow(2, 4, 100, 80);
    Paint();
    EXPECT_TRUE(log.empty()) << "it rounds as before";
    view->MoveWindow(3, 4, 100, 80);
    const auto picture = Paint();
    EXPECT_EQ(log, (Log{"erase", "draw"}));
    EXPECT_EQ(picture->At(14, 15), GetSysColor(COLOR_WINDOW)) << "(3 + 10) * 1.5 - 3 * 1.5 + 1";
    EXPECT_EQ(picture->At(15, 15), RGB(255, 0, 0));
    EXPECT_EQ(picture->At(21, 15), RGB(255, 0, 0));
    EXPECT_EQ(picture->At(22, 15), GetSysColor(COLOR_WINDOW));
}

TEST_F(WindowStateTest, ContextsOfAnotherRatioInvalidateTheirWindow) {
    Paint();
    backend.windows.ratio = 1.25;
    { CClientDC(view).FillSolidRect(20, 20, 5, 5, RGB(0, 0, 255)); }
    EXPECT_EQ(backend.windows.At(view->m_hWnd).presented, kPlace);
    log.clear();
    Paint();
    EXPECT_EQ(log, (Log{"erase", "draw"}));
}

TEST_F(WindowStateTest, UpdatePaintsAtOnceButNotInsideItself) {
    Paint();
    log.clear();
    view->Invalidate(false);
    view->UpdateWindow();
    EXPECT_EQ(log, (Log{"draw"}));
    view->nest = true;
    view->RedrawWindow(nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    EXPECT_EQ(log, (Log{"draw", "draw"}));
    Paint();
    EXPECT_EQ(log, (Log{"draw", "draw", "erase", "draw"})) << "what was invalidated meanwhile";
    top.ShowWindow(SW_HIDE);
    view->Invalidate();
    view->UpdateWindow();
    EXPECT_EQ(log.size(), 4u) << "nothing is painted while a parent is hidden";
}

TEST_F(WindowStateTest, ResizingPaintsEverythingAgain) {
    Paint();
    log.clear();
    view->MoveWindow(0, 0, 120, 90);
    Paint();
    EXPECT_EQ(log, (Log{"size 120x90", "erase", "draw"}));
}

TEST_F(WindowStateTest, DestructionGoesFromTheParentDown) {
    const HWND handle = view->m_hWnd;
    top.DestroyWindow();
    EXPECT_EQ(log, (Log{"destroy", "deleted"})) << "WM_DESTROY once, then the view deletes itself";
    EXPECT_EQ(CWnd::FromHandle(handle), nullptr);
    EXPECT_EQ(SendMessage(handle, WM_USER, 0, 0), 0);
}

TEST_F(WindowStateTest, AContextMayOutliveItsWindow) {
    CClientDC dc(view);
    top.DestroyWindow();
    dc.FillSolidRect(0, 0, 100, 80, RGB(255, 0, 0));
    CClientDC nothing(&top);
    nothing.FillSolidRect(0, 0, 100, 80, RGB(255, 0, 0));
    EXPECT_FALSE(top.IsWindow());
}

TEST_F(WindowStateTest, FramesTakeTheirWidthFromTheClientArea) {
    EXPECT_EQ(view->GetClientRect(), kPlace);
    EXPECT_TRUE(view->ModifyStyle(0, WS_BORDER));
    EXPECT_EQ(view->GetClientRect(), (RECT{0, 0, 98, 78}));
    EXPECT_TRUE(view->ModifyStyleEx(0, WS_EX_CLIENTEDGE));
    EXPECT_EQ(view->GetClientRect(), (RECT{0, 0, 94, 74}));
    EXPECT_TRUE(view->ModifyStyle(WS_BORDER, 0));
    EXPECT_FALSE(view->ModifyStyle(WS_BORDER, 0));
    EXPECT_EQ(log, (Log{"size 98x78", "size 94x74", "size 96x76"}));
    POINT corner{0, 0};
    view->ClientToScreen(&corner);
    EXPECT_EQ(corner, (POINT{2, 2}));
    view->ScreenToClient(&corner);
    EXPECT_EQ(corner, (POINT{0, 0}));
    CWnd tip;
    ASSERT_TRUE(
        tip.CreateEx(WS_EX_DLGMODALFRAME, {}, WS_POPUP | WS_BORDER, {0, 0, 26, 16}, nullptr, 0));
    EXPECT_EQ(tip.GetClientRect(), (RECT{0, 0, 20, 10}));
}

TEST_F(WindowStateTest, ScrollBarsComeAndGoWithTheirRange) {
    view->SetScrollRange(SB_VERT, 0, 10);
    EXPECT_TRUE(view->GetStyle() & WS_VSCROLL);
    EXPECT_EQ(view->GetClientRect().right, 100 - kvx::test::FakeWindows::kBar);
    view->SetScrollPos(SB_VERT, 99);
    EXPECT_EQ(view->GetScrollPos(SB_VERT), 10);
    EXPECT_EQ(view->SetScrollPos(SB_VERT, 4), 10);
    view->SetScrollInfo(SB_VERT, {SIF_PAGE, 0, 0, 8, 0, 0});
    EXPECT_EQ(view->GetScrollPos(SB_VERT), 3) << "the last page begins at 10 - 7";
    EXPECT_EQ(backend.windows.At(view->m_hWnd).bars[SB_VERT].maximum, 3);
    view->SetScrollInfo(SB_VERT, {SIF_PAGE | SIF_DISABLENOSCROLL, 0, 0, 11, 0, 0});
    EXPECT_TRUE(view->GetStyle() & WS_VSCROLL);
    EXPECT_FALSE(backend.windows.At(view->m_hWnd).bars[SB_VERT].enabled);
    view->SetScrollRange(SB_VERT, 0, 0);
    EXPECT_FALSE(view->GetStyle() & WS_VSCROLL);
    view->SetScrollRange(SB_HORZ, 0, 65535);
    view->EnableScrollBar(SB_BOTH, ESB_ENABLE_BOTH);
    view->EnableScrollBar(SB_HORZ, ESB_DISABLE_BOTH);
    EXPECT_FALSE(backend.windows.At(view->m_hWnd).bars[SB_HORZ].enabled);
    EXPECT_TRUE(backend.windows.At(view->m_hWnd).bars[SB_VERT].enabled) << "each by itself";
    view->ShowScrollBar(SB_BOTH, false);
    EXPECT_EQ(view->GetClientRect(), kPlace);
    SCROLLINFO info;
    view->GetScrollInfo(SB_HORZ, &info);
    EXPECT_EQ(info.nMax, 65535);
}

TEST_F(WindowStateTest, WhatIsNotThereAnswersNothing) {
    CWnd none;
    EXPECT_EQ(none.GetScrollPos(SB_VERT), 0);
    EXPECT_FALSE(none.DestroyWindow());
    EXPECT_EQ(top.SendDlgItemMessage(77, WM_USER), 0);
    EXPECT_FALSE(PostMessage(nullptr, WM_USER, 0, 0));
    EXPECT_TRUE(PostMessage(view->m_hWnd, WM_USER, 0, 0));
    CWnd control;
    EXPECT_FALSE(control.SubclassDlgItem(77, &top));
    EXPECT_TRUE(control.SubclassDlgItem(1, &top)) << "the view's window";
    EXPECT_TRUE(control.DestroyWindow());
    delete view;  // it has no window any more with which it would go
}

TEST_F(WindowStateTest, CaptureIsToldWhenItIsLost) {
    EXPECT_EQ(view->SetCapture(), nullptr);
    EXPECT_EQ(CWnd::GetCapture(), view);
    EXPECT_EQ(top.SetCapture(), view);
    EXPECT_EQ(log, (Log{"capture lost"}));
    EXPECT_EQ(view->SetCapture(), &top);
    view->EnableWindow(false);
    EXPECT_EQ(log, (Log{"capture lost", "capture lost"})) << "a disabled window loses the mouse";
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    EXPECT_TRUE(view->EnableWindow(true)) << "it was disabled";
    EXPECT_FALSE(view->EnableWindow(true));
}

TEST_F(WindowStateTest, BatchesMoveEveryWindow) {
    CWnd second;
    ASSERT_TRUE(second.Create(WS_CHILD, {0, 0, 1, 1}, &top, 2));
    HDWP batch = BeginDeferWindowPos(2);
    batch = DeferWindowPos(batch, view->m_hWnd, 0, 20, 100, 60, SWP_NOZORDER);
    batch = DeferWindowPos(batch, second.m_hWnd, 5, 6, 70, 20, SWP_NOZORDER | SWP_NOMOVE);
    batch = DeferWindowPos(batch, nullptr, 0, 0, 1, 1, 0);
    EXPECT_TRUE(log.empty());
    EXPECT_TRUE(EndDeferWindowPos(batch));
    EXPECT_EQ(view->GetWindowRect(), (RECT{0, 20, 100, 80}));
    EXPECT_EQ(second.GetWindowRect(), (RECT{0, 0, 70, 20}));
}

TEST_F(WindowStateTest, WindowContextsReachOverTheChildren) {
    top.Invalidate();
    backend.windows.Paint(top.m_hWnd);
    const kvx::Surface before = *Paint();
    for (int i = 0; i < 2; ++i) {
        CWindowDC dc(&top);
        dc.PatBlt(20, 0, 4, 80, DSTINVERT);
        if (i == 0) {
            EXPECT_NE(Paint()->At(21, 40), before.At(21, 40));
        }
    }
    EXPECT_EQ(Paint()->At(21, 40), before.At(21, 40));
}

TEST_F(WindowStateTest, WindowContextsMeetTheSamePixelsInTheChildren) {
    backend.windows.ratio = 1.5;
    view->MoveWindow(7, 3, 60, 40);
    const auto parent = backend.windows.Paint(top.m_hWnd);
    const auto child = Paint();
    const kvx::Surface parentBefore = *parent;
    const kvx::Surface childBefore = *child;
    CWindowDC dc(&top);
    dc.PatBlt(20, 0, 3, 80, DSTINVERT);
    const int corner = 11;  // 7 * 1.5, rounded up
    for (int x = 0; x < child->DeviceSize().cx; ++x) {
        const bool inParent = parent->At(x + corner, 30) != parentBefore.At(x + corner, 30);
        EXPECT_EQ(child->At(x, 30) != childBefore.At(x, 30), inParent) << x;
    }
    EXPECT_NE(child->At(30 - corner, 30), childBefore.At(30 - corner, 30));
}

TEST(NoBackendTest, WindowsAreRefusedAndColoursAreClassic) {
    CWnd window;
    EXPECT_FALSE(window.Create(WS_POPUP, {0, 0, 1, 1}, nullptr, 0));
    EXPECT_FALSE(IsWindow(reinterpret_cast<HWND>(16)));
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
    EXPECT_EQ(GetSysColor(COLOR_BTNFACE), RGB(192, 192, 192));
}

}  // namespace
