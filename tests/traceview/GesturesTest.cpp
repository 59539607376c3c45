// What the mouse has begun, while the display moves under it, and when something else comes before
// the window: drags go on or leave everything as it was, tips follow what was painted last.

#include <functional>

#include "framework/StatusFrameWnd.h"
#include "platform/controls/StatusBarCtrl.h"
#include "support/toolkit/Toolkit.h"
#include "traceview/TraceWindow.h"

namespace kvx::test {
namespace {

class Gestures : public TraceWindow {
  protected:
    // Paints, and lets the window look at what it painted.
    void Settle() {
        view->UpdateWindow();
        test::Settle();
    }
    CPoint OnBar() const { return {Geometry().X(330.0), Geometry().LineCentre(2)}; }
    void ShowTip() {
        Move(OnBar());
        ASSERT_TRUE(view->IsTipShown());
    }
    CString MarkText() const {
        const CWnd* const bar = instance->Frame().GetDlgItem(kStatusBarPane);
        return static_cast<const CStatusBarCtrl*>(bar)->GetText(0);
    }
    void Wheel(UINT flags, int delta, CPoint at) {
        view->ClientToScreen(&at);
        view->SendMessage(WM_MOUSEWHEEL, MakeWheel(flags, delta), MakePointParam(at.x, at.y));
    }
    // The end marker is held left of where it stood.
    void HoldEndMarker() {
        Press(InChart(MarkerTime(kMarkerEnd)));
        Move(InChart(1110));
        ASSERT_EQ(MarkerTime(kMarkerEnd), 1110.0);
    }
    // A real dialog or menu of the host over the window, for as long as it stands.
    void Over(const std::function<void()>& look, bool menu) {
        WhileBehind(view->m_hWnd, menu, look);
    }
};

TEST_F(Gestures, TipsGoWithWhatWasUnderThePointer) {
    Open(PeriodicTrace(20));
    ShowTip();
    Wheel(0, -120, OnBar());  // nothing to scroll: it stays
    Settle();
    EXPECT_TRUE(view->IsTipShown());
    // A click of the line's name, given as the sequence of commands that hides it.
    view->Display()->selection.Toggle(data.contexts.GetKey(2));
    instance->OnCommand(ids::kHideLine);
    Settle();
    EXPECT_FALSE(view->IsTipShown());
    Move(OnBar());
    EXPECT_FALSE(view->IsTipShown());
    view->Display()->selection.Toggle(data.contexts.GetKey(2));
    instance->OnCommand(ids::kShowLine);
    Settle();  // the pointer still rests there
    EXPECT_TRUE(view->IsTipShown());
    const CPoint at = OnBar();
    view->SendMessage(WM_HSCROLL, MakeScroll(SB_RIGHT, 0));
    Settle();
    EXPECT_FALSE(view->IsTipShown());
    view->SendMessage(WM_HSCROLL, MakeScroll(SB_LEFT, 0));
    Settle();
    EXPECT_TRUE(view->IsTipShown());
    Move({at.x, Geometry().clientHeight + 40});
    EXPECT_FALSE(view->IsTipShown());
}

TEST_F(Gestures, TipsGoWithADialogAndAMenuAndDoNotComeBackBelowThem) {
    Open(PeriodicTrace(20));
    for (const bool menu : {false, true}) {
        ShowTip();
        Over(
            [this] {
                EXPECT_FALSE(view->IsTipShown());
                EXPECT_NE(CWnd::GetCapture(), view);
                view->Invalidate();
                Settle();
                EXPECT_FALSE(view->IsTipShown());
            },
            menu);
    }
    ShowTip();
}

TEST_F(Gestures, AMarkerStaysUnderThePointerWhileTheDisplayMoves) {
    Open(PeriodicTrace(200));
    HoldEndMarker();
    const CString before = MarkText();
    const int x = Geometry().X(1110.0);
    Move({x + 100, 50});
    EXPECT_NE(MarkText(), before);  // the status text follows
    Move({x, 50});
    const auto expectUnderPointer = [&] {
        Settle();
        const ChartGeometry g = Geometry();
        EXPECT_LE(std::abs(g.X(MarkerTime(kMarkerEnd)) - x), g.X(100.0) - g.X(0.0));
        EXPECT_TRUE(data.markers.IsDragging(kMarkerEnd));
    };
    Wheel(MK_CONTROL, 120, {x, 50});
    expectUnderPointer();
    view->SendMessage(WM_HSCROLL, MakeScroll(SB_PAGERIGHT, 0));  // decodes
    expectUnderPointer();
    instance->MoveWindow(0, 0, 700, 250);
    expectUnderPointer();
    host.broadcasts.clear();
    Release({x, 50});
    EXPECT_EQ(host.broadcasts.size(), 1u);
    EXPECT_LE(MarkerTime(kMarkerStart), MarkerTime(kMarkerEnd));
}

TEST_F(Gestures, WhatComesBeforeTheWindowTakesADragBack) {
    Open(PeriodicTrace(200));
    data.sysCalls.Sort(COSSysCallList::No, 0);
    data.sysCalls.Sort(COSSysCallList::No, 0);
    const double end = MarkerTime(kMarkerEnd);
    const std::uint32_t first = data.sysCalls.RowHistoryIndex(0);
    const auto expectUntouched = [&](const char* what) {
        SCOPED_TRACE(what);
        EXPECT_EQ(MarkerTime(kMarkerEnd), end);
        EXPECT_FALSE(data.markers.IsAnyDragging());
        EXPECT_EQ(data.sysCalls.RowHistoryIndex(0), first);
        EXPECT_EQ(data.sysCalls.SortColumn(), COSSysCallList::No);
        Release(InChart(1110));
        EXPECT_EQ(MarkerTime(kMarkerEnd), end);
        EXPECT_NE(CWnd::GetCapture(), view);
    };
    HoldEndMarker();
    view->SendMessage(WM_KEYDOWN, VK_ESCAPE);
    expectUntouched("Esc");
    HoldEndMarker();
    view->SendMessage(WM_CANCELMODE);
    expectUntouched("cancelled");
    for (const bool menu : {false, true}) {
        HoldEndMarker();
        Over([&] { expectUntouched(menu ? "menu" : "dialog"); }, menu);
    }
    // The recording goes: nothing of it is measured at the moves that follow.
    HoldEndMarker();
    view->OnUpdate(view, kHintTraceCleared, nullptr);
    EXPECT_FALSE(data.markers.IsAnyDragging());
    host.broadcasts.clear();
    Move(InChart(500));
    EXPECT_TRUE(host.broadcasts.empty());
}

TEST_F(Gestures, ADraggedLineAndEdgeFollowTheScrolledWindow) {
    ScriptedTrace trace = PeriodicTrace(20);
    for (int i = 0; i < 40; ++i) trace.AddTask(100 + i, "task");
    Open(std::move(trace));
    const CString carried = NameOf(1);
    Press(Cell(1));
    Move({40, Geometry().LineCentre(3)});
    EXPECT_EQ(Viewport().dropLine, 3);
    view->SendMessage(WM_KEYDOWN, VK_DOWN);
    EXPECT_EQ(Viewport().dropLine, 4);
    Release({40, Geometry().LineCentre(4)});
    EXPECT_EQ(NameOf(3), carried);
    EXPECT_EQ(Viewport().dropLine, -1);
    // The edge goes no further than the window that is smaller by now.
    const int left = Geometry().left;
    Press({left, 3});
    instance->MoveWindow(0, 0, 500, 300);
    Move({5000, 3});
    Release({5000, 3});
    EXPECT_LE(Geometry().left, 500);
    EXPECT_GT(Geometry().left, left);
}

TEST_F(Gestures, ScrollingGoesOnAfterAServiceThatThrew) {
    Open(PeriodicTrace(2000));
    service.onCall = [](const std::string& operation) {
        if (operation.rfind("Analyze", 0) == 0) throw std::runtime_error("damaged");
    };
    view->SendMessage(WM_HSCROLL, MakeScroll(SB_RIGHT, 0));
    const double start = Geometry().displayStart;
    service.onCall = nullptr;
    view->SendMessage(WM_HSCROLL, MakeScroll(SB_RIGHT, 0));
    EXPECT_GT(Geometry().displayStart, start);
}

TEST_F(Gestures, AltWithTheArrowsGoesBackAndForward) {
    Open(PeriodicTrace(200));
    const double whole = Geometry().scale;
    Command(ids::kExpand);
    const double scale = Geometry().scale;
    Command(ids::kAdjust);
    const auto alt = [&](UINT key) {
        PressAltKey(view->m_hWnd, key);
        ReleaseAlt(view->m_hWnd);
    };
    alt(VK_LEFT);
    EXPECT_EQ(Geometry().scale, scale);
    alt(VK_LEFT);
    EXPECT_EQ(Geometry().scale, whole);
    alt(VK_LEFT);
    EXPECT_EQ(Geometry().scale, whole);
    alt(VK_RIGHT);
    EXPECT_EQ(Geometry().scale, scale);
}

// What is shown is what the last hint left, without waiting for another cause to paint.
TEST_F(Gestures, HintsArePaintedAtOnce) {
    Open(PeriodicTrace(20));
    const CPoint bar = OnBar();
    std::uint32_t event = 0;
    Settle();
    ASSERT_EQ(view->HitTest(bar.x, bar.y, &event), 1);
    view->OnUpdate(nullptr, kHintTraceCleared, nullptr);
    Settle();
    EXPECT_EQ(view->HitTest(bar.x, bar.y, &event), 0);
    view->OnUpdate(nullptr, kHintTraceReady, nullptr);
    Settle();
    EXPECT_EQ(view->HitTest(bar.x, bar.y, &event), 1);
    // Another window changed the lines.
    service.Trace().contexts[2].shown = 0;
    data.contexts.Load();
    view->OnUpdate(nullptr, kHintDisplayChanged, nullptr);
    Settle();
    EXPECT_EQ(view->HitTest(bar.x, bar.y, &event), 0);
}

}  // namespace
}  // namespace kvx::test
