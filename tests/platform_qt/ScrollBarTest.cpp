// Scroll bars of windows: they take their place, and the user's hand on them becomes requests.

#include <QScrollBar>

#include "platform/base/SystemInfo.h"
#include "platform_qt/QtFixture.h"

namespace {

using kvx::test::Log;

class Scroller : public CWnd {
  public:
    Log log;
    SIZE size;
    bool follows = true;

  protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {
            ON_WM_HSCROLL<&Scroller::OnHorizontal>(),
            ON_WM_VSCROLL<&Scroller::OnVertical>(),
            ON_WM_SIZE<&Scroller::OnResize>(),
        };
        static const MessageMap kMap{&CWnd::GetMessageMap(), kEntries};
        return kMap;
    }
    void OnHorizontal(UINT code, int position) {
        log.push_back("h" + std::to_string(code) + " " + std::to_string(position));
    }
    void OnVertical(UINT code, int position) {
        log.push_back("v" + std::to_string(code) + " " + std::to_string(position) + " at " +
                      std::to_string(GetScrollPos(SB_VERT)));
        if (!follows) return;
        if (code == SB_LINEDOWN) SetScrollPos(SB_VERT, GetScrollPos(SB_VERT) + 1);
        if (code == SB_THUMBPOSITION || code == SB_THUMBTRACK) SetScrollPos(SB_VERT, position);
    }
    void OnResize(UINT, int cx, int cy) { size = {cx, cy}; }
};

class ScrollBarTest : public kvx::test::QtFixture {
  protected:
    void SetUp() override {
        MakeTop(top);
        ASSERT_TRUE(scroller.Create(WS_CHILD | WS_VISIBLE | WS_BORDER, {0, 0, 202, 152}, &top, 1));
    }
    // The bar, or null.
    QScrollBar* Bar(Qt::Orientation orientation) const {
        for (QScrollBar* bar : Widget(scroller)->findChildren<QScrollBar*>())
            if (bar->orientation() == orientation && !bar->isHidden()) return bar;
        return nullptr;
    }
    CWnd top;
    Scroller scroller;
};

TEST_F(ScrollBarTest, BarsReduceTheClientAreaAtOnce) {
    EXPECT_EQ(scroller.size, (SIZE{200, 150}));
    scroller.SetScrollRange(SB_VERT, 0, 100);
    const int thick = GetSystemMetrics(SM_CXVSCROLL);
    EXPECT_EQ(scroller.size, (SIZE{200 - thick, 150}));
    scroller.SetScrollRange(SB_HORZ, 0, 100);
    EXPECT_EQ(scroller.size, (SIZE{200 - thick, 150 - thick}));
    Settle();
    EXPECT_EQ(Bar(Qt::Vertical)->geometry(), QRect(201 - thick, 1, thick, 150 - thick));
    EXPECT_EQ(Bar(Qt::Horizontal)->geometry(), QRect(1, 151 - thick, 200 - thick, thick));
    scroller.MoveWindow(0, 0, 102, 102);
    EXPECT_EQ(scroller.size, (SIZE{100 - thick, 100 - thick}));
    EXPECT_EQ(Bar(Qt::Vertical)->height(), 100 - thick);
    scroller.ShowScrollBar(SB_BOTH, false);
    EXPECT_EQ(scroller.size, (SIZE{100, 100}));
    EXPECT_TRUE(CWnd::FromHandle(scroller.m_hWnd)->GetDlgItem(0) == nullptr) << "no child windows";
}

TEST_F(ScrollBarTest, ArrowsAndPagesAsk) {
    scroller.SetScrollInfo(SB_VERT, {SIF_RANGE | SIF_PAGE | SIF_POS, 0, 99, 10, 20, 0});
    scroller.SetScrollRange(SB_HORZ, 0, 65535);
    Settle();
    QScrollBar* const bar = Bar(Qt::Vertical);
    EXPECT_EQ(bar->maximum(), 90);
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, QPoint(8, bar->height() - 3));
    EXPECT_EQ(bar->value(), 21) << "the window moved it";
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, QPoint(8, bar->height() - 20));
    EXPECT_EQ(bar->value(), 21) << "the window did not move it";
    bar->triggerAction(QAbstractSlider::SliderToMinimum);
    Bar(Qt::Horizontal)->triggerAction(QAbstractSlider::SliderSingleStepSub);
    Bar(Qt::Horizontal)->triggerAction(QAbstractSlider::SliderPageStepAdd);
    EXPECT_EQ(scroller.log, (Log{"v1 0 at 20", "v3 0 at 21", "v6 0 at 21", "h0 0", "h3 0"}));
}

TEST_F(ScrollBarTest, TheThumbTracksAndStays) {
    scroller.SetScrollInfo(SB_VERT, {SIF_RANGE | SIF_POS, 0, 100, 0, 0, 0});
    Settle();
    QScrollBar* const bar = Bar(Qt::Vertical);
    const auto drag = [&](int position) {
        bar->setSliderDown(true);
        bar->setSliderPosition(position);
        SCROLLINFO info;
        scroller.GetScrollInfo(SB_VERT, &info);
        EXPECT_EQ(info.nTrackPos, position);
        bar->setSliderDown(false);
    };
    drag(40);
    EXPECT_EQ(scroller.log, (Log{"v5 40 at 0", "v4 40 at 40", "v8 0 at 40"}));
    EXPECT_EQ(bar->value(), 40);
    scroller.follows = false;
    drag(70);
    EXPECT_EQ(scroller.log.size(), 6u);
    EXPECT_EQ(bar->sliderPosition(), 40) << "a window that does not follow keeps its place";
}

TEST_F(ScrollBarTest, DisabledBarsAskNothing) {
    scroller.SetScrollRange(SB_VERT, 0, 100);
    scroller.EnableScrollBar(SB_VERT, ESB_DISABLE_BOTH);
    Settle();
    QScrollBar* const bar = Bar(Qt::Vertical);
    ASSERT_NE(bar, nullptr);
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, QPoint(8, bar->height() - 3));
    EXPECT_TRUE(scroller.log.empty());
}

}  // namespace
