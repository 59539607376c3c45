// The drawing rules, pixel by pixel.

#include <gtest/gtest.h>

#include <string>

#include "platform/drawing/SurfaceGraphics.h"
#include "support/FakeBackend.h"

namespace {

constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);

class SurfaceTest : public testing::Test {
  protected:
    // Rows of the surface: '#' black, 'r' red, 'b' blue, '.' white, '?' anything else.
    std::string Picture() const {
        std::string text;
        for (int y = 0; y < surface.Size().cy; ++y) {
            for (int x = 0; x < surface.Size().cx; ++x) text += Letter(surface.At(x, y));
            text += '\n';
        }
        return text;
    }
    static char Letter(COLORREF c) {
        return c == kWhite ? '.' : c == kBlack ? '#' : c == kRed ? 'r' : c == kBlue ? 'b' : '?';
    }
    kvx::Surface surface{{12, 6}, kWhite};
    kvx::SurfaceGraphics graphics{surface};
};

TEST_F(SurfaceTest, FillsExcludeRightAndBottom) {
    graphics.FillRect({2, 1, 5, 3}, {kBlack, kHatchNone, {}});
    graphics.FillRect({7, 4, 7, 5}, {kRed, kHatchNone, {}});      // no width
    graphics.FillRect({10, 4, 99, 99}, {kBlue, kHatchNone, {}});  // past the edge
    graphics.FillRect({-9, -9, 1, 1}, {kRed, kHatchNone, {}});
    EXPECT_EQ(Picture(),
              "r...........\n"
              "..###.......\n"
              "..###.......\n"
              "............\n"
              "..........bb\n"
              "..........bb\n");
}

TEST_F(SurfaceTest, LinesExcludeTheirLastPoint) {
    const kvx::LinePattern pen{PS_SOLID, 1, kBlack, {}};
    graphics.Line({1, 0}, {4, 0}, pen);
    graphics.Line({11, 0}, {8, 0}, pen);  // to the left: starts at 11, stops before 8
    graphics.Line({0, 2}, {0, 5}, pen);
    graphics.Line({2, 5}, {2, 2}, pen);
    graphics.Line({4, 2}, {7, 5}, pen);
    graphics.Line({11, 2}, {8, 5}, pen);
    graphics.Line({6, 1}, {6, 1}, pen);  // nothing
    EXPECT_EQ(Picture(),
              ".###.....###\n"
              "............\n"
              "#...#......#\n"
              "#.#..#....#.\n"
              "#.#...#..#..\n"
              "..#.........\n");
}

TEST_F(SurfaceTest, WideLinesLieAroundTheirPoints) {
    graphics.Line({2, 2}, {6, 2}, {PS_SOLID, 3, kBlack, {}});
    graphics.Line({9, 0}, {9, 3}, {PS_SOLID, 2, kRed, {}});
    EXPECT_EQ(Picture(),
              ".........rr.\n"
              "..####...rr.\n"
              "..####...rr.\n"
              "..####......\n"
              "............\n"
              "............\n");
}

TEST_F(SurfaceTest, DotsAreAnchoredToTheSurface) {
    graphics.Line({0, 0}, {12, 0}, {PS_DOT, 1, kBlack, {}});
    graphics.Line({2, 1}, {12, 1}, {PS_DOT, 1, kBlack, {}});    // in step with the line above
    graphics.Line({12, 2}, {0, 2}, {PS_DOT, 1, kBlack, kRed});  // opaque: gaps are painted
    graphics.Line({11, 3}, {11, 6}, {PS_DOT, 1, kBlack, {}});
    EXPECT_EQ(Picture(),
              "###...###...\n"
              "..#...###...\n"
              ".##rrr###rrr\n"
              "............\n"
              "............\n"
              "............\n")
        << "the line from the right starts at 12, outside, and stops before 0";
}

TEST_F(SurfaceTest, DashesAreEighteenAndSix) {
    kvx::Surface wide({50, 1}, kWhite);
    kvx::SurfaceGraphics on(wide);
    on.Line({0, 0}, {50, 0}, {PS_DASH, 1, kBlack, {}});
    std::string row;
    for (int x = 0; x < 50; ++x) row += Letter(wide.At(x, 0));
    EXPECT_EQ(row, "##################......##################......##");
}

TEST_F(SurfaceTest, HatchIsAnchoredAndLeavesOrFillsItsGaps) {
    kvx::Surface square({10, 8}, kRed);
    kvx::SurfaceGraphics on(square);
    on.FillRect({0, 0, 10, 4}, {kBlack, HS_DIAGCROSS, {}});
    on.FillRect({1, 4, 10, 8}, {kBlack, HS_DIAGCROSS, kWhite});
    std::string picture;
    for (int y = 0; y < 8; ++y) {
        for (int x = 0; x < 10; ++x) picture += Letter(square.At(x, y));
        picture += '\n';
    }
    EXPECT_EQ(picture,
              "#rrrrrr##r\n"
              "r#rrrr#rr#\n"
              "rr#rr#rrrr\n"
              "rrr##rrrrr\n"
              "r..##.....\n"
              "r.#..#....\n"
              "r#....#..#\n"
              "r......##.\n");
}

TEST_F(SurfaceTest, InvertedAndXoredBarsDisappear) {
    graphics.FillRect({0, 0, 6, 6}, {RGB(10, 20, 200), kHatchNone, {}});
    const std::string before = Picture();
    const COLORREF colour = surface.At(3, 3);
    graphics.InvertRect({2, 1, 9, 4});
    EXPECT_EQ(surface.At(3, 3), RGB(245, 235, 55));
    EXPECT_EQ(surface.At(8, 3), kBlack);
    EXPECT_EQ(surface.At(9, 3), kWhite);
    graphics.InvertRect({2, 1, 9, 4});
    graphics.XorRect({0, 0, 12, 6}, RGB(192, 192, 192));
    EXPECT_NE(Picture(), before);
    graphics.XorRect({0, 0, 12, 6}, RGB(192, 192, 192));
    EXPECT_EQ(Picture(), before);
    EXPECT_EQ(surface.At(3, 3), colour);
}

TEST_F(SurfaceTest, RectanglesHaveAPenInsideTheirEdges) {
    graphics.RoundRect({1, 1, 7, 5}, {0, 0}, kvx::LinePattern{PS_SOLID, 1, kBlack, {}},
                       kvx::FillPattern{kRed, kHatchNone, {}});
    graphics.RoundRect({8, 0, 12, 2}, {0, 0}, {}, kvx::FillPattern{kBlue, kHatchNone, {}});
    graphics.RoundRect({8, 3, 12, 6}, {0, 0}, kvx::LinePattern{PS_SOLID, 1, kBlack, {}}, {});
    EXPECT_EQ(Picture(),
              "........bbbb\n"
              ".######.bbbb\n"
              ".#rrrr#.....\n"
              ".#rrrr#.####\n"
              ".######.#..#\n"
              "........####\n");
}

TEST_F(SurfaceTest, RoundedRectanglesAreClosedAndSymmetric) {
    kvx::Surface big({14, 12}, kWhite);
    kvx::SurfaceGraphics on(big);
    on.RoundRect({1, 1, 13, 11}, {8, 8}, kvx::LinePattern{PS_SOLID, 1, kBlack, {}},
                 kvx::FillPattern{kRed, kHatchNone, {}});
    int outline = 0;
    for (int y = 0; y < 12; ++y) {
        for (int x = 0; x < 14; ++x) {
            EXPECT_EQ(big.At(x, y), big.At(13 - x, y));
            EXPECT_EQ(big.At(x, y), big.At(x, 11 - y));
            outline += big.At(x, y) == kBlack;
            if (big.At(x, y) != kRed) continue;
            // No inside pixel touches the outside.
            for (const auto& [dx, dy] : {std::pair{1, 0}, {-1, 0}, {0, 1}, {0, -1}})
                EXPECT_NE(big.At(x + dx, y + dy), kWhite) << x << ' ' << y;
        }
    }
    EXPECT_GT(outline, 20);
    EXPECT_EQ(big.At(1, 1), kWhite) << "the corner is rounded off";
    EXPECT_EQ(big.At(7, 1), kBlack);
    EXPECT_EQ(big.At(0, 6), kWhite);
}

TEST_F(SurfaceTest, ClipLimitsEverything) {
    graphics.SetClip(RECT{3, 2, 6, 4});
    graphics.FillRect({0, 0, 12, 6}, {kRed, kHatchNone, {}});
    graphics.Line({0, 0}, {6, 6}, {PS_SOLID, 1, kBlack, {}});
    graphics.InvertRect({5, 3, 12, 6});
    EXPECT_EQ(Picture(),
              "............\n"
              "............\n"
              "...rrr......\n"
              "...#r?......\n"
              "............\n"
              "............\n");
    EXPECT_EQ(graphics.Touched(), (RECT{3, 2, 6, 4}));
    graphics.SetClip({});
    graphics.FillRect({0, 0, 1, 1}, {kRed, kHatchNone, {}});
    EXPECT_EQ(surface.At(0, 0), kRed);
}

TEST_F(SurfaceTest, FarLinesCostNothingAndStayOnTheirSlope) {
    graphics.Line({-2000000000, -1000000000}, {2000000000, 1000000000}, {PS_SOLID, 1, kBlack, {}});
    EXPECT_EQ(surface.At(0, 0), kBlack);
    EXPECT_EQ(surface.At(8, 4), kBlack);
    EXPECT_EQ(surface.At(8, 5), kWhite);
}

TEST_F(SurfaceTest, ImagesAreBlendedByTheirAlpha) {
    const std::uint32_t pixels[] = {0xFFFF0000, 0x00FF0000, 0x80000000, 0xFF0000FF};
    graphics.Image({11, 0}, {2, 2}, pixels);  // the right half is outside
    graphics.Image({0, 0}, {2, 2}, pixels);
    EXPECT_EQ(surface.At(0, 0), kRed);
    EXPECT_EQ(surface.At(1, 0), kWhite);
    EXPECT_EQ(surface.At(0, 1), RGB(127, 127, 127));
    EXPECT_EQ(surface.At(1, 1), kBlue);
    EXPECT_EQ(surface.At(11, 0), kRed);
}

TEST_F(SurfaceTest, TextFillsItsCellAndIsClipped) {
    const kvx::test::FakeBackend backend;
    kvx::Surface big({40, 20}, kWhite);
    kvx::SurfaceGraphics on(big);
    kvx::TextStyle style;
    style.colour = kBlack;
    style.background = kRed;
    on.Text({2, 1}, "ab", style);
    EXPECT_EQ(big.At(2, 1), kBlack);
    EXPECT_EQ(big.At(17, 16), kBlack);
    EXPECT_EQ(big.At(18, 16), kWhite);
    EXPECT_EQ(big.At(17, 17), kWhite);
    style.clip = RECT{20, 0, 25, 4};
    on.Text({18, 0}, "ab", style);
    EXPECT_EQ(big.At(19, 2), kWhite);
    EXPECT_EQ(big.At(24, 3), kBlack);
    EXPECT_EQ(big.At(25, 3), kWhite);
    EXPECT_EQ(big.At(24, 4), kWhite);
}

TEST(SurfaceSizeTest, ResizingKeepsWhatIsInBoth) {
    kvx::Surface surface({4, 4}, kRed);
    surface.Resize({6, 2}, kBlue);
    EXPECT_EQ(surface.At(3, 1), kRed);
    EXPECT_EQ(surface.At(4, 1), kBlue);
    surface.Resize({-3, 5}, kBlue);
    EXPECT_EQ(surface.Size(), (SIZE{0, 5}));
}

}  // namespace
