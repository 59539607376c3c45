// Scale and scrolling: what is shown, what is decoded for it, and STOP.

#include <random>

#include "traceview/TraceWindow.h"

namespace kvx::test {
namespace {

using Scroll = TraceWindow;

double Span(const ChartGeometry& g) {
    return g.traceEnd - g.traceStart;
}

void ExpectConsistent(const ChartGeometry& g) {
    EXPECT_GE(g.scale, 1.0);
    EXPECT_GE(g.displayStart, g.traceStart);
    EXPECT_LE(g.displayStart, g.traceEnd);
    EXPECT_NEAR(g.displayEnd, g.displayStart + Span(g) / g.scale, 1e-6 * Span(g));
}

TEST_F(Scroll, ReduceReachesExactlyTheWholeTraceAndDecodesIt) {
    Open(PeriodicTrace(500));
    while (Enabled(ids::kReduce)) {
        Command(ids::kReduce);
        ExpectConsistent(Geometry());
    }
    EXPECT_EQ(Geometry().scale, 1.0);
    EXPECT_EQ(service.Decoded(), service.Trace().Count());
    const std::uint32_t decoded = service.Decoded();
    Command(ids::kExpand);
    EXPECT_DOUBLE_EQ(Geometry().scale, 1.5);
    EXPECT_EQ(service.Decoded(), decoded);
}

TEST_F(Scroll, StopLeavesTheDisplayAsItWasAndKeepsWhatIsDecoded) {
    Open(PeriodicTrace(20000));
    const ChartGeometry before = Geometry();
    StopAfter(1);
    view->SendMessage(WM_HSCROLL, MakeScroll(SB_RIGHT, 0));
    EXPECT_EQ(Geometry().displayStart, before.displayStart);
    EXPECT_EQ(Geometry().scale, before.scale);
    EXPECT_GT(service.Decoded(), 300u);
    EXPECT_LT(service.Decoded(), service.Trace().Count());
    EXPECT_TRUE(instance->Frame().IsWindowEnabled());
    // The second attempt goes on where the first was stopped.
    service.onCall = nullptr;
    view->SendMessage(WM_HSCROLL, MakeScroll(SB_RIGHT, 0));
    EXPECT_GT(Geometry().displayStart, before.displayStart);
    EXPECT_EQ(service.Decoded(), service.Trace().Count());
}

TEST_F(Scroll, KeysAndThumbAndTheEnds) {
    Open(PeriodicTrace(200));
    view->SendMessage(WM_KEYDOWN, VK_RIGHT);
    const double step = Geometry().displayStart;
    EXPECT_NEAR(step, Span(Geometry()) / Geometry().scale / 10.0, 1e-9);
    view->SendMessage(WM_KEYDOWN, VK_LEFT);
    view->SendMessage(WM_KEYDOWN, VK_LEFT);
    EXPECT_EQ(Geometry().displayStart, Geometry().traceStart);
    view->SendMessage(WM_HSCROLL, MakeScroll(SB_RIGHT, 0));
    EXPECT_EQ(Geometry().displayStart, Geometry().traceEnd);
    EXPECT_EQ(view->GetScrollPos(SB_HORZ), 65535);
    view->UpdateWindow();
    view->SendMessage(WM_HSCROLL, MakeScroll(SB_THUMBPOSITION, 0));
    EXPECT_NEAR(Geometry().displayStart, Geometry().traceStart, 1.0);
}

TEST_F(Scroll, WheelZoomKeepsTheTimeUnderThePointer) {
    Open(PeriodicTrace(200));
    const CPoint at = InChart(2000);
    CPoint screen = at;
    view->ClientToScreen(&screen);
    const double anchor = Geometry().TimeAt(at.x);
    for (const int notch : {120, 120, 120, -120, 120}) {
        view->SendMessage(WM_MOUSEWHEEL, MakeWheel(MK_CONTROL, notch),
                          MakePointParam(screen.x, screen.y));
        EXPECT_NEAR(Geometry().TimeAt(at.x), anchor, 1.0);
        ExpectConsistent(Geometry());
    }
    const double start = Geometry().displayStart;
    view->SendMessage(WM_MOUSEWHEEL, MakeWheel(MK_SHIFT, -120), MakePointParam(screen.x, screen.y));
    EXPECT_GT(Geometry().displayStart, start);
}

TEST_F(Scroll, LinesScrollOnlyAsFarAsTheyReach) {
    ScriptedTrace trace = PeriodicTrace(20);
    for (int i = 0; i < 60; ++i) trace.AddTask(100 + i, "task");
    Open(std::move(trace));
    const int count = data.contexts.GetCount();
    ASSERT_LT(Geometry().visibleLines, count);
    SCROLLINFO bar;
    view->GetScrollInfo(SB_VERT, &bar);
    EXPECT_EQ(bar.nMax, count - Geometry().visibleLines);
    view->SendMessage(WM_KEYDOWN, VK_END);
    EXPECT_EQ(Geometry().firstLine, count - Geometry().visibleLines);
    view->SendMessage(WM_KEYDOWN, VK_DOWN);
    EXPECT_EQ(Geometry().firstLine, count - Geometry().visibleLines);
    // A window that grows pulls earlier lines in instead of showing nothing below the last.
    instance->MoveWindow(0, 0, 800, 600);
    EXPECT_EQ(Geometry().firstLine, std::max(0, count - Geometry().visibleLines));
    view->SendMessage(WM_KEYDOWN, VK_HOME);
    EXPECT_EQ(Geometry().firstLine, 0);
}

TEST_F(Scroll, AnySizeOfTheWindowIsPainted) {
    Open(PeriodicTrace(50));
    for (const auto& [width, height] : {std::pair{0, 0}, {1, 1}, {3, 40}, {200, 15}, {2000, 900}}) {
        instance->MoveWindow(0, 0, width, height);
        view->RedrawWindow();
        Move({width / 2, height / 2});
    }
}

TEST_F(Scroll, RandomUseKeepsTheDisplayConsistent) {
    Open(PeriodicTrace(300));
    std::mt19937 random(3);
    for (int i = 0; i < 400; ++i) {
        switch (random() % 7) {
            case 0:
                instance->OnCommand(ids::kExpand);
                break;
            case 1:
                instance->OnCommand(ids::kReduce);
                break;
            case 2:
                instance->OnCommand(ids::kAdjust);
                break;
            case 3:
                view->SendMessage(WM_HSCROLL, MakeScroll(random() % 8, int(random() % 65536)));
                break;
            case 4:
                view->SendMessage(WM_VSCROLL, MakeScroll(random() % 8, int(random() % 5)));
                break;
            case 5:
                Drag({int(random() % 800), int(random() % 300)},
                     {int(random() % 800), int(random() % 300)});
                break;
            default:
                view->RedrawWindow();
                break;
        }
        const ChartGeometry g = Geometry();
        ASSERT_GE(g.displayStart, g.traceStart);
        ASSERT_LE(g.displayStart, g.traceEnd);
        ASSERT_GE(g.displayEnd, g.displayStart);
        ASSERT_LE(MarkerTime(kMarkerStart), MarkerTime(kMarkerEnd));
        ASSERT_GE(g.firstLine, 0);
    }
}

}  // namespace
}  // namespace kvx::test
