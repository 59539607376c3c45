// What a device context adds to its graphics: selected objects, background mode, origin.

#include <gtest/gtest.h>

#include "platform/drawing/DC.h"
#include "support/RecordingGraphics.h"

namespace {

class DeviceContextTest : public testing::Test {
  protected:
    kvx::test::RecordingGraphics graphics;
    CDC dc{&graphics};
};

TEST_F(DeviceContextTest, SelectionAnswersThePreviousObject) {
    CPen red(PS_SOLID, 1, RGB(255, 0, 0));
    CPen dotted(PS_DOT, 1, RGB(0, 0, 255));
    CPen* const first = dc.SelectObject(&red);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(dc.SelectObject(&dotted), &red);
    EXPECT_EQ(dc.SelectObject(first), &dotted);
    EXPECT_EQ(dc.SetTextColor(RGB(1, 2, 3)), 0u);
    EXPECT_EQ(dc.SetTextColor(0), RGB(1, 2, 3));
    EXPECT_EQ(dc.SetBkMode(TRANSPARENT), OPAQUE);
    EXPECT_EQ(dc.SetBkMode(OPAQUE), TRANSPARENT);
}

TEST_F(DeviceContextTest, OriginAndBackgroundReachEveryOperation) {
    CPen dotted(PS_DOT, 1, RGB(0, 0, 255));
    CBrush hatch(HS_DIAGCROSS, RGB(255, 0, 0));
    CFont font;
    font.CreatePointFont(110, "Courier New");
    dc.SelectObject(&dotted);
    dc.SelectObject(&hatch);
    dc.SelectObject(&font);
    dc.SetBkColor(RGB(255, 255, 0));
    EXPECT_EQ(dc.SetViewportOrg(-8, 100), (CPoint{0, 0}));
    dc.MoveTo(10, 0);
    dc.LineTo(20, 0);
    dc.LineTo(20, 5);
    dc.FillRect({10, 10, 20, 20}, &hatch);
    dc.SetBkMode(TRANSPARENT);
    dc.MoveTo({10, 0});
    dc.LineTo({20, 0});
    dc.PatBlt(10, 10, 5, 5, PATCOPY);
    const RECT cell{0, 0, 30, 16};
    dc.ExtTextOut(1, 1, ETO_CLIPPED, &cell, "RUN");
    EXPECT_EQ(dc.GetViewportOrg(), (CPoint{-8, 100}));
    dc.SetViewportOrg(0, 0);
    dc.SetBkMode(OPAQUE);
    dc.TextOut(4, 5, "id");
    EXPECT_EQ(graphics.Text(),
              "line 2 100 12 100 dot 1 #0000FF on #FFFF00\n"
              "line 12 100 12 105 dot 1 #0000FF on #FFFF00\n"
              "hatch 5 2 110 12 120 #FF0000 on #FFFF00\n"
              "line 2 100 12 100 dot 1 #0000FF\n"
              "hatch 5 2 110 7 115 #FF0000\n"
              "font \"Courier New\" -15\n"
              "text -7 101 \"RUN\" #000000 clip -8 100 22 116\n"
              "text 4 5 \"id\" #000000 on #FFFF00\n");
}

TEST_F(DeviceContextTest, RasterOperations) {
    CBrush grey(RGB(192, 192, 192));
    CBrush none;
    none.CreateNullBrush();
    dc.SelectObject(&grey);
    EXPECT_TRUE(dc.PatBlt(1, 2, 3, 4, PATINVERT));
    EXPECT_TRUE(dc.PatBlt(1, 2, 3, 4, DSTINVERT));
    EXPECT_TRUE(dc.PatBlt(9, 9, -3, -4, DSTINVERT));
    EXPECT_TRUE(dc.PatBlt(1, 2, 0, 4, DSTINVERT));
    EXPECT_TRUE(dc.PatBlt(0, 0, 1, 1, BLACKNESS));
    EXPECT_TRUE(dc.PatBlt(0, 0, 1, 1, WHITENESS));
    EXPECT_FALSE(dc.PatBlt(0, 0, 1, 1, 0x12345678));
    dc.SelectObject(&none);
    dc.PatBlt(1, 2, 3, 4, PATCOPY);
    dc.FillRect({5, 5, 5, 9}, &grey);
    EXPECT_EQ(graphics.Text(),
              "xor 1 2 4 6 #C0C0C0\n"
              "invert 1 2 4 6\n"
              "invert 6 5 9 9\n"
              "fill 0 0 1 1 #000000\n"
              "fill 0 0 1 1 #FFFFFF\n");
}

TEST_F(DeviceContextTest, ShapesLeaveOutWhatIsNotSelected) {
    CPen invisible(PS_NULL, 1, 0);
    CBrush blue(RGB(0, 0, 255));
    CBrush none;
    none.CreateNullBrush();
    dc.SelectObject(&blue);
    dc.RoundRect(1, 2, 9, 12, 4, 6);
    dc.SelectObject(&invisible);
    dc.Rectangle(1, 2, 9, 12);
    dc.SelectObject(&none);
    dc.Rectangle(1, 2, 1, 12);
    dc.LineTo(50, 50);
    EXPECT_EQ(graphics.Text(),
              "roundrect 1 2 9 12 corner 4 6 pen solid 1 #000000 fill #0000FF\n"
              "roundrect 1 2 9 12 corner 0 0 fill #0000FF\n");
}

TEST_F(DeviceContextTest, ClipRectanglesAreInLogicalCoordinates) {
    const RECT inside{0, 0, 10, 10};
    dc.SetViewportOrg(5, 5);
    dc.SetClipRect(&inside);
    dc.SetClipRect(nullptr);
    EXPECT_EQ(graphics.Text(), "clip 5 5 15 15\nclip none\n");
}

TEST_F(DeviceContextTest, MetricsAreThoseOfTheGraphics) {
    TEXTMETRIC metrics;
    EXPECT_TRUE(dc.GetTextMetrics(&metrics));
    EXPECT_EQ(metrics.tmHeight + metrics.tmExternalLeading, 16);
    EXPECT_EQ(metrics.tmAveCharWidth, 8);
    EXPECT_EQ(dc.GetTextExtent("\xC3\xA4h"), (CSize{16, 16})) << "characters, not bytes";
}

TEST(ObjectsTest, WidePatternedPensAreSolidAndFontsKeepTheirDescription) {
    EXPECT_EQ(CPen(PS_DOT, 3, 0).Style(), PS_SOLID);
    EXPECT_EQ(CPen(PS_DOT, 1, 0).Style(), PS_DOT);
    EXPECT_EQ(CPen(PS_SOLID, 0, 0).Width(), 1);
    CBrush brush;
    EXPECT_FALSE(brush.CreateHatchBrush(6, 0));
    CFont font;
    LOGFONT description;
    EXPECT_FALSE(font.GetLogFont(&description));
    font.CreatePointFont(110, "Courier New");
    ASSERT_TRUE(font.GetLogFont(&description));
    CFont copy;
    copy.CreateFontIndirect(description);
    font.DeleteObject();
    ASSERT_TRUE(copy.GetLogFont(&description));
    EXPECT_EQ(description.lfHeight, -15);
    EXPECT_EQ(description.lfFaceName, "Courier New");
}

}  // namespace
