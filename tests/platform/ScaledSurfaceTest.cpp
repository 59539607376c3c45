// The drawing rules on screens whose pixels are not the logical ones: where edges, lines, patterns
// and texts land among the device pixels.

#include <gtest/gtest.h>

#include <set>

#include "platform/drawing/SurfaceGraphics.h"
#include "support/FakeBackend.h"

namespace {

using kvx::PixelGrid;
using kvx::Surface;
using kvx::SurfaceGraphics;

constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);
constexpr kvx::LinePattern kPen{PS_SOLID, 1, kBlack, {}};

std::vector<COLORREF> Pixels(const Surface& surface) {
    std::vector<COLORREF> all;
    for (int y = 0; y < surface.DeviceSize().cy; ++y)
        for (int x = 0; x < surface.DeviceSize().cx; ++x) all.push_back(surface.At(x, y));
    return all;
}

// The bounds of all pixels of the colour.
RECT BoundsOf(const Surface& surface, COLORREF colour) {
    RECT bounds;
    for (int y = 0; y < surface.DeviceSize().cy; ++y)
        for (int x = 0; x < surface.DeviceSize().cx; ++x)
            if (surface.At(x, y) == colour) bounds = kvx::Union(bounds, {x, y, x + 1, y + 1});
    return bounds;
}

bool Contains(const RECT& outer, const RECT& inner) {
    return kvx::Intersection(outer, inner) == inner;
}

class ScaledTest : public testing::TestWithParam<double> {
  protected:
    static constexpr SIZE kSize{40, 24};
    // Odd corners, so that the surface begins inside a device pixel at most ratios.
    PixelGrid grid{GetParam(), {3, 5}};
    Surface surface{kSize, kWhite, grid};
    SurfaceGraphics graphics{surface};

    RECT Device(const RECT& logical) const { return grid.ToDevice(logical); }
};

TEST_P(ScaledTest, EverySizeAddsUp) {
    const double ratio = GetParam();
    EXPECT_EQ(surface.Size(), kSize);
    EXPECT_NEAR(surface.DeviceSize().cx, kSize.cx * ratio, 1);
    EXPECT_EQ(grid.X(0), 0);
    EXPECT_EQ(grid.Y(kSize.cy), surface.DeviceSize().cy);
    for (int edge = -50; edge < 50; ++edge) {
        const auto size = grid.X(edge + 1) - grid.X(edge);
        EXPECT_GE(size, static_cast<int>(ratio)) << edge;
        EXPECT_LE(size, static_cast<int>(ratio) + 1) << edge;
    }
    // A child counts from its own corner and meets its parent's pixels.
    const PixelGrid child(ratio, {3 + 7, 5 + 9});
    for (int edge = 0; edge < 20; ++edge)
        EXPECT_EQ(grid.X(7) + child.X(edge), grid.X(7 + edge)) << edge;
}

TEST_P(ScaledTest, NeighboursShareTheirEdge) {
    for (int x = 0; x < kSize.cx; ++x)
        graphics.FillRect({x, 0, x + 1, kSize.cy}, {x % 2 ? kRed : kBlue, kHatchNone, {}});
    for (int x = 0; x < surface.DeviceSize().cx; ++x) EXPECT_NE(surface.At(x, 3), kWhite) << x;
    for (int x = 0; x < kSize.cx; ++x)
        EXPECT_EQ(surface.At(static_cast<int>(grid.X(x)), 3), x % 2 ? kRed : kBlue) << x;
}

TEST_P(ScaledTest, LinesStandInsideTheirPixelsAndAreEquallyWide) {
    for (int at = 1; at < 20; ++at) {
        Surface fresh(kSize, kWhite, grid);
        SurfaceGraphics on(fresh);
        on.Line({at, 2}, {at, 9}, kPen);
        const RECT upright = BoundsOf(fresh, kBlack);
        EXPECT_TRUE(Contains(Device({at, 2, at + 1, 9}), upright)) << at;
        EXPECT_EQ(upright.Width(), static_cast<int>(GetParam())) << at;
        EXPECT_EQ(upright.Height(), Device({at, 2, at + 1, 9}).Height()) << at;
        on.Line({30, at}, {12, at}, {PS_SOLID, 1, kRed, {}});  // leftwards, without 12
        const RECT level = BoundsOf(fresh, kRed);
        EXPECT_TRUE(Contains(Device({13, at, 31, at + 1}), level)) << at;
        EXPECT_EQ(level.Width(), Device({13, at, 31, at + 1}).Width()) << at;
        EXPECT_EQ(level.Height(), static_cast<int>(GetParam())) << at;
    }
}

TEST_P(ScaledTest, WideAndSlantedLinesKeepToTheirPoints) {
    graphics.Line({4, 6}, {20, 6}, {PS_SOLID, 3, kBlack, {}});
    EXPECT_TRUE(Contains(Device({4, 5, 20, 8}), BoundsOf(surface, kBlack)));
    graphics.Line({39, 10}, {28, 21}, {PS_SOLID, 1, kRed, {}});
    const RECT slanted = BoundsOf(surface, kRed);
    EXPECT_EQ(slanted.right, surface.DeviceSize().cx) << "it begins at the edge";
    EXPECT_EQ(slanted.left, grid.X(29));
    // Every device column has its part.
    for (int x = slanted.left; x < slanted.right; ++x) {
        int marked = 0;
        for (int y = 0; y < surface.DeviceSize().cy; ++y) marked += surface.At(x, y) == kRed;
        EXPECT_EQ(marked, static_cast<int>(GetParam())) << x;
    }
}

TEST_P(ScaledTest, FarLinesStayOnTheirSlope) {
    graphics.Line({-2000000000, -1000000000}, {2000000000, 1000000000}, kPen);
    for (int x = 0; x < surface.DeviceSize().cx; ++x) {
        const int y = x / 2;
        if (y < 1 || y + 2 >= surface.DeviceSize().cy) continue;
        EXPECT_TRUE(surface.At(x, y - 1) == kBlack || surface.At(x, y) == kBlack ||
                    surface.At(x, y + 1) == kBlack)
            << x;
    }
}

TEST_P(ScaledTest, InvertedAndXoredBarsDisappear) {
    graphics.FillRect({0, 0, 17, 9}, {RGB(10, 20, 200), kHatchNone, {}});
    const auto before = Pixels(surface);
    for (int x = 1; x < 30; ++x) {
        graphics.InvertRect({x, 0, x + 2, kSize.cy});
        graphics.XorRect({0, x / 2, kSize.cx, x / 2 + 3}, RGB(192, 192, 192));
        EXPECT_NE(Pixels(surface), before);
        graphics.XorRect({0, x / 2, kSize.cx, x / 2 + 3}, RGB(192, 192, 192));
        graphics.InvertRect({x, 0, x + 2, kSize.cy});
        EXPECT_EQ(Pixels(surface), before) << x;
    }
}

TEST_P(ScaledTest, WhatWasTouchedIsWholeLogicalPixels) {
    for (int at = 2; at < 12; ++at) {
        SurfaceGraphics on(surface);
        on.FillRect({at, at, at + 3, at + 2}, {kRed, kHatchNone, {}});
        EXPECT_EQ(on.Touched(), (RECT{at, at, at + 3, at + 2}));
        SurfaceGraphics thin(surface);
        thin.Line({at, 3}, {at, 8}, kPen);
        EXPECT_EQ(thin.Touched(), (RECT{at, 3, at + 1, 8}));
    }
    EXPECT_TRUE(SurfaceGraphics(surface).Touched().IsRectEmpty());
}

TEST_P(ScaledTest, ClipsEndWhereTheirRectanglesDo) {
    graphics.SetClip(RECT{3, 2, 11, 7});
    graphics.FillRect({-100, -100, 2000000000, 2000000000}, {kRed, kHatchNone, {}});
    EXPECT_EQ(BoundsOf(surface, kRed), Device({3, 2, 11, 7}));
    EXPECT_EQ(graphics.Touched(), (RECT{3, 2, 11, 7}));
}

TEST_P(ScaledTest, RoundedRectanglesFillTheirPlaceAndAreClosed) {
    graphics.RoundRect({2, 2, 22, 20}, {16, 16}, kPen, kvx::FillPattern{kRed, kHatchNone, {}});
    EXPECT_EQ(BoundsOf(surface, kBlack), Device({2, 2, 22, 20}));
    const RECT shape = BoundsOf(surface, kBlack);
    for (int y = shape.top; y < shape.bottom; ++y) {
        for (int x = shape.left; x < shape.right; ++x) {
            const int mirrored = shape.left + shape.right - 1 - x;
            EXPECT_EQ(surface.At(x, y), surface.At(mirrored, y)) << x << ' ' << y;
            if (surface.At(x, y) != kRed) continue;
            for (const auto& [dx, dy] : {std::pair{1, 0}, {-1, 0}, {0, 1}, {0, -1}})
                EXPECT_NE(surface.At(x + dx, y + dy), kWhite) << x << ' ' << y;
        }
    }
    EXPECT_EQ(surface.At(shape.left, shape.top), kWhite) << "the corner is rounded off";
}

TEST_P(ScaledTest, CellsHaveLinesOfOneWidthAndNoGaps) {
    const auto line = static_cast<int>(GetParam());
    for (int at = 1; at < 6; ++at) {
        Surface fresh(kSize, kWhite, grid);
        SurfaceGraphics on(fresh);
        on.Cell({at, at, at + 11, at + 9}, {{1, 1}, kBlue, kBlack, kRed});
        const RECT cell = Device({at, at, at + 11, at + 9});
        EXPECT_EQ(BoundsOf(fresh, kBlack).right, cell.right);
        EXPECT_EQ(BoundsOf(fresh, kBlack).bottom, cell.bottom);
        EXPECT_EQ(BoundsOf(fresh, kBlue).TopLeft(), cell.TopLeft());
        EXPECT_EQ(BoundsOf(fresh, kRed),
                  (RECT{cell.left + line, cell.top + line, cell.right - line, cell.bottom - line}));
        int empty = 0;
        for (int y = cell.top; y < cell.bottom; ++y)
            for (int x = cell.left; x < cell.right; ++x) empty += fresh.At(x, y) == kWhite;
        EXPECT_EQ(empty, line * line) << "the upper right corner alone";
    }
}

TEST_P(ScaledTest, PatternsRepeatInDevicePixels) {
    const int period = static_cast<int>(PixelGrid::Round(8 * GetParam()));
    graphics.FillRect({0, 0, kSize.cx, kSize.cy}, {kBlack, HS_DIAGCROSS, {}});
    std::set<int> marked;
    for (int x = 0; x + period < surface.DeviceSize().cx; ++x) {
        EXPECT_EQ(surface.At(x, 4), surface.At(x + period, 4)) << x;
        if (x < period && surface.At(x, 4) == kBlack) marked.insert(x);
    }
    EXPECT_EQ(marked.size(), 2u * static_cast<std::size_t>(GetParam())) << "two slanted lines";
    graphics.FillRect({0, 0, kSize.cx, kSize.cy}, {kWhite, kHatchNone, {}});
    graphics.Line({0, 2}, {kSize.cx, 2}, {PS_DOT, 1, kRed, {}});
    const auto row = static_cast<int>(grid.Y(2));
    const int dot = static_cast<int>(PixelGrid::Round(3 * GetParam()));
    for (int x = 0; x < surface.DeviceSize().cx; ++x)
        EXPECT_EQ(surface.At(x, row), x / dot % 2 ? kWhite : kRed) << x;
}

TEST_P(ScaledTest, TextKeepsToItsCell) {
    const kvx::test::FakeBackend backend;  // fills all of each character's cell
    kvx::TextStyle style;
    style.colour = kBlack;
    style.background = kRed;
    for (int at = 1; at < 6; ++at) {
        Surface fresh(kSize, kWhite, grid);
        SurfaceGraphics on(fresh);
        on.Text({at, at}, "ab", style);
        const RECT cell = Device({at, at, at + 16, at + 16});
        EXPECT_TRUE(Contains(cell, BoundsOf(fresh, kBlack))) << at;
        EXPECT_EQ(kvx::Union(BoundsOf(fresh, kBlack), BoundsOf(fresh, kRed)), cell) << at;
        EXPECT_EQ(on.TextExtent(style.font, "ab"), (SIZE{16, 16})) << "logical at every ratio";
        EXPECT_EQ(on.Metrics(style.font).tmHeight, 16);
    }
}

TEST_P(ScaledTest, PixelsOfImagesAbut) {
    const std::uint32_t pixels[] = {0xFFFF0000, 0xFF0000FF, 0x00FF0000, 0xFFFF0000};
    graphics.Image({5, 3}, {2, 2}, pixels);
    EXPECT_EQ(BoundsOf(surface, kBlue), Device({6, 3, 7, 4}));
    EXPECT_EQ(BoundsOf(surface, kRed), Device({5, 3, 7, 5}));
}

TEST_P(ScaledTest, ResizingKeepsWhatIsInBoth) {
    graphics.FillRect({0, 0, 10, 10}, {kRed, kHatchNone, {}});
    surface.Resize({20, 30}, kBlue);
    EXPECT_EQ(BoundsOf(surface, kRed), Device({0, 0, 10, 10}));
    EXPECT_EQ(BoundsOf(surface, kBlue).bottom, Device({0, 0, 20, 30}).bottom);
}

INSTANTIATE_TEST_SUITE_P(Ratios, ScaledTest, testing::Values(1.0, 1.25, 1.5, 1.75, 2.0, 2.5));

TEST(PixelGridTest, GridsThatRoundAlikeAreEqual) {
    EXPECT_EQ(PixelGrid(1, {3, 7}), PixelGrid());
    EXPECT_EQ(PixelGrid(2, {3, 7}), PixelGrid(2, {0, 0}));
    EXPECT_EQ(PixelGrid(1.5, {3, 7}), PixelGrid(1.5, {5, -1}));
    EXPECT_NE(PixelGrid(1.5, {3, 7}), PixelGrid(1.5, {4, 7}));
    EXPECT_NE(PixelGrid(1.25, {3, 7}), PixelGrid(1.25, {5, 7}));
    EXPECT_EQ(PixelGrid(0, {3, 7}), PixelGrid());
}

// 0.1 is no sum of binary fractions: products that ought to be halves lie beside them.
TEST(PixelGridTest, HalvesRoundAlikeEverywhere) {
    for (const double ratio : {1.1, 1.3, 1.7, 2.3}) {
        const PixelGrid window(ratio, {0, 0});
        for (int corner = 0; corner < 60; ++corner) {
            const PixelGrid child(ratio, {corner, 0});
            for (int edge = 0; edge < 60; ++edge)
                ASSERT_EQ(window.X(corner) + child.X(edge), window.X(corner + edge))
                    << ratio << ' ' << corner << ' ' << edge;
        }
    }
}

TEST(PixelGridTest, SmallerThanOneStillDraws) {
    const PixelGrid half(0.5, {0, 0});
    Surface surface({40, 20}, kWhite, half);
    EXPECT_EQ(surface.DeviceSize(), (SIZE{20, 10}));
    SurfaceGraphics graphics(surface);
    graphics.Line({3, 3}, {30, 3}, kPen);
    EXPECT_EQ(BoundsOf(surface, kBlack).Height(), 1);
    graphics.RoundRect({0, 0, 30, 20}, {5, 5}, kPen, {});
    EXPECT_EQ(half.ToDevice(graphics.Touched()), (RECT{0, 0, 15, 10}));
}

}  // namespace
