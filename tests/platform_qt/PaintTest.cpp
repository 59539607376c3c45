// Painting on the toolkit: what stands in the surface is what is shown.

#include <QImage>

#include "platform/base/SystemInfo.h"
#include "platform/controls/StatusBarCtrl.h"
#include "platform/windows/View.h"
#include "platform_qt/QtFixture.h"
#include "support/WindowPicture.h"

namespace {

constexpr QRgb kRed = qRgb(255, 0, 0);

class Painter : public CView {
  public:
    int draws = 0;
    std::function<void(CDC&)> draw = [](CDC& dc) {
        dc.FillSolidRect(10, 10, 20, 20, RGB(255, 0, 0));
    };
    void OnDraw(CDC* dc) override {
        ++draws;
        draw(*dc);
    }
};

class PaintTest : public kvx::test::QtFixture {
  protected:
    void SetUp() override {
        MakeTop(top, 200, 150);
        view = new Painter;
        ASSERT_TRUE(view->Create(WS_CHILD | WS_VISIBLE | WS_BORDER, {20, 10, 122, 92}, &top, 1));
        Settle();
    }
    QImage Shown() { return Widget(top)->grab().toImage(); }
    CWnd top;
    Painter* view = nullptr;
};

TEST_F(PaintTest, TheScreenShowsTheSurfaceInsideTheFrame) {
    EXPECT_EQ(view->draws, 1);
    const QImage picture = Shown();
    EXPECT_EQ(picture.pixel(20 + 1 + 10, 10 + 1 + 10), kRed);
    EXPECT_EQ(picture.pixel(20 + 1 + 29, 10 + 1 + 29), kRed);
    EXPECT_NE(picture.pixel(20 + 1 + 30, 10 + 1 + 29), kRed);
    EXPECT_EQ(picture.pixel(20, 50), QApplication::palette().shadow().color().rgb());
    EXPECT_EQ(picture.pixel(60, 60), QApplication::palette().base().color().rgb());
    EXPECT_EQ(view->draws, 1) << "showing again does not paint again";
}

TEST_F(PaintTest, InvertedBarsAppearAtOnceAndDisappear) {
    const QImage before = Shown();
    const auto invert = [this] {
        CClientDC dc(view);
        dc.PatBlt(15, 0, 2, 80, DSTINVERT);
    };
    invert();
    const QImage during = Shown();
    EXPECT_EQ(during.pixel(20 + 1 + 15, 10 + 1 + 12), qRgb(0, 255, 255));
    EXPECT_EQ(during.pixel(20 + 1 + 17, 10 + 1 + 12), before.pixel(20 + 1 + 17, 10 + 1 + 12));
    invert();
    EXPECT_EQ(Shown(), before);
    EXPECT_EQ(view->draws, 1);
}

TEST_F(PaintTest, UpdateWindowPaintsNow) {
    view->draw = [](CDC& dc) { dc.FillSolidRect(50, 50, 5, 5, RGB(255, 0, 0)); };
    view->Invalidate();
    EXPECT_EQ(view->draws, 1);
    view->UpdateWindow();
    EXPECT_EQ(view->draws, 2);
    EXPECT_EQ(Shown().pixel(20 + 1 + 52, 10 + 1 + 52), kRed);
    EXPECT_NE(Shown().pixel(20 + 1 + 12, 10 + 1 + 12), kRed) << "erased";
}

TEST_F(PaintTest, PaintingMayChangeItsOwnWindow) {
    view->draw = [this](CDC& dc) {
        view->SetScrollRange(SB_VERT, 0, 100);
        view->UpdateWindow();
        dc.FillSolidRect(0, 0, 100, 80, RGB(255, 0, 0));
    };
    view->Invalidate();
    Settle();
    EXPECT_EQ(view->draws, 3) << "the new size is painted, and only that";
    EXPECT_EQ(Shown().pixel(20 + 1 + 80, 10 + 1 + 40), kRed);
}

TEST_F(PaintTest, PicturesAreTakenOfWindowsThatWereNeverShown) {
    CWnd hidden;
    ASSERT_TRUE(hidden.Create(WS_POPUP | WS_CAPTION, {0, 0, 80, 60}, nullptr, 0));
    auto* const painter = new Painter;
    ASSERT_TRUE(painter->Create(WS_CHILD | WS_VISIBLE, {0, 0, 80, 60}, &hidden, 1));
    const QImage picture = kvx::test::PictureOf(hidden.m_hWnd);
    EXPECT_EQ(picture.size(), QSize(80, 60));
    EXPECT_EQ(picture.pixel(15, 15), kRed);
}

TEST_F(PaintTest, TextStandsInItsCellAndFixedFacesAreFixed) {
    CFont fixed;
    fixed.CreatePointFont(110, "Courier New");
    CClientDC dc(view);
    dc.SelectObject(&fixed);
    TEXTMETRIC metrics;
    dc.GetTextMetrics(&metrics);
    EXPECT_EQ(dc.GetTextExtent("iiii").cx, dc.GetTextExtent("WWWW").cx);
    EXPECT_EQ(dc.GetTextExtent("iiii").cx, 4 * metrics.tmAveCharWidth);
    EXPECT_EQ(dc.GetTextExtent("x").cy, metrics.tmHeight);
    dc.SetTextColor(RGB(255, 0, 0));
    dc.SetBkMode(TRANSPARENT);
    dc.FillSolidRect(view->GetClientRect(), RGB(255, 255, 255));
    dc.TextOut(40, 40, "MMM");
    const QImage picture = Shown();
    int inked = 0;
    for (int y = 0; y < 80; ++y)
        for (int x = 0; x < 100; ++x) {
            if (picture.pixel(21 + x, 11 + y) == qRgb(255, 255, 255)) continue;
            ++inked;
            EXPECT_GE(x, 39);
            EXPECT_LE(x, 41 + 3 * metrics.tmAveCharWidth);
            EXPECT_GE(y, 40);
            EXPECT_LT(y, 40 + metrics.tmHeight);
        }
    EXPECT_GT(inked, 50);
}

TEST_F(PaintTest, LogicalFontsKeepTheirSize) {
    CClientDC dc(view);
    const auto metricsOf = [&dc](int height, int width) {
        CFont font;
        LOGFONT description;
        description.lfHeight = height;
        description.lfWidth = width;
        description.lfFaceName = "Courier New";
        font.CreateFontIndirect(description);
        dc.SelectObject(&font);
        TEXTMETRIC metrics;
        dc.GetTextMetrics(&metrics);
        dc.SelectObject(static_cast<CFont*>(nullptr));
        return metrics;
    };
    EXPECT_LE(metricsOf(11, 0).tmHeight, 12) << "positive: the cell";
    EXPECT_NEAR(metricsOf(11, 8).tmAveCharWidth, 8, 1);
    const TEXTMETRIC characters = metricsOf(-20, 0);
    EXPECT_GE(characters.tmHeight, 20) << "negative: the characters";
    EXPECT_EQ(characters.tmAveCharWidth, 12);
}

TEST_F(PaintTest, PaletteChangesRepaint) {
    const QPalette before = QApplication::palette();
    QPalette dark = before;
    dark.setColor(QPalette::Base, QColor(20, 20, 20));
    QApplication::setPalette(dark);
    Settle();
    EXPECT_EQ(GetSysColor(COLOR_WINDOW), RGB(20, 20, 20));
    EXPECT_EQ(view->draws, 2);
    EXPECT_EQ(Shown().pixel(100, 80), qRgb(20, 20, 20));
    QApplication::setPalette(before);
    Settle();
}

TEST_F(PaintTest, StatusBarsShowTheirParts) {
    CStatusBarCtrl bar;
    ASSERT_TRUE(bar.Create(WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, {0, 120, 200, 150}, &top, 2));
    const int edges[] = {60, 120, -1};
    EXPECT_TRUE(bar.SetParts(3, edges));
    EXPECT_TRUE(bar.SetText("Mark", 0));
    EXPECT_TRUE(bar.SetText("None", 1, SBT_NOBORDERS));
    EXPECT_FALSE(bar.SetText("x", 3));
    EXPECT_EQ(bar.GetText(0), "Mark");
    int read[5] = {};
    EXPECT_EQ(bar.GetParts(5, read), 3);
    EXPECT_EQ(read[1], 120);
    RECT last;
    ASSERT_TRUE(bar.GetRect(2, &last));
    EXPECT_EQ(last.right, 200);
    Settle();
    const QImage picture = Shown();
    const QRgb dark = QApplication::palette().dark().color().rgb();
    const QRgb face = QApplication::palette().window().color().rgb();
    EXPECT_EQ(picture.pixel(30, 122), dark) << "sunken edge of part 0";
    EXPECT_EQ(picture.pixel(100, 122), face) << "part 1 has no border";
    EXPECT_EQ(picture.pixel(150, 122), dark);
    bar.SetBkColor(RGB(255, 0, 0));
    Settle();
    EXPECT_EQ(Shown().pixel(118, 146), kRed);
}

}  // namespace
