#include "platform/SurfaceGraphics.h"

#include <cmath>
#include <cstdlib>

#include "platform/Rects.h"
#include "platform/TextCache.h"

namespace kvx {

namespace {

// One byte a row, the leftmost pixel in the highest bit.
constexpr std::uint8_t kHatches[6][8] = {
    {0x00, 0x00, 0x00, 0x00, 0xFF, 0x00, 0x00, 0x00},  // horizontal
    {0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08},  // vertical
    {0x80, 0x40, 0x20, 0x10, 0x08, 0x04, 0x02, 0x01},  // forward diagonal
    {0x01, 0x02, 0x04, 0x08, 0x10, 0x20, 0x40, 0x80},  // backward diagonal
    {0x08, 0x08, 0x08, 0x08, 0xFF, 0x08, 0x08, 0x08},  // cross
    {0x81, 0x42, 0x24, 0x18, 0x18, 0x24, 0x42, 0x81},  // diagonal cross
};

struct Dashes {
    int on;
    int period;
};

constexpr Dashes DashesOf(int style) {
    if (style == PS_DOT) return {3, 6};
    if (style == PS_DASH) return {18, 24};
    return {1, 1};
}

// Whether the pen marks the pixel at that coordinate along the line.
bool IsMarked(const Dashes& dashes, int along) {
    const int phase = along % dashes.period;
    return (phase < 0 ? phase + dashes.period : phase) < dashes.on;
}

void FillSolid(Surface& surface, const RECT& area, COLORREF colour) {
    const std::uint32_t pixel = ToPixel(colour);
    for (int y = area.top; y < area.bottom; ++y)
        std::fill_n(surface.Row(y) + area.left, area.Width(), pixel);
}

void FillHatched(Surface& surface, const RECT& area, const FillPattern& fill) {
    const std::uint32_t pixel = ToPixel(fill.colour);
    for (int y = area.top; y < area.bottom; ++y) {
        std::uint32_t* row = surface.Row(y);
        const unsigned bits = kHatches[fill.hatch][y & 7];
        for (int x = area.left; x < area.right; ++x) {
            if (bits & (0x80u >> (x & 7)))
                row[x] = pixel;
            else if (fill.gap)
                row[x] = ToPixel(*fill.gap);
        }
    }
}

void FillArea(Surface& surface, const RECT& area, const FillPattern& fill) {
    if (fill.hatch == kHatchNone)
        FillSolid(surface, area, fill.colour);
    else
        FillHatched(surface, area, fill);
}

// A horizontal or vertical line is a rectangle that excludes its last point.
RECT StraightLineRect(POINT from, POINT to, int width) {
    const int before = (width - 1) / 2;
    const bool horizontal = from.y == to.y;
    const int a = horizontal ? from.x : from.y;
    const int b = horizontal ? to.x : to.y;
    const int first = a <= b ? a : b + 1;
    const int end = a <= b ? b : a + 1;
    const int side = (horizontal ? from.y : from.x) - before;
    if (horizontal) return {first, side, end, side + width};
    return {side, first, side + width, end};
}

void DrawStraight(Surface& surface, const RECT& area, bool horizontal, const LinePattern& pen) {
    if (pen.style == PS_SOLID) return FillSolid(surface, area, pen.colour);
    const Dashes dashes = DashesOf(pen.style);
    for (int y = area.top; y < area.bottom; ++y) {
        std::uint32_t* row = surface.Row(y);
        for (int x = area.left; x < area.right; ++x) {
            if (IsMarked(dashes, horizontal ? x : y))
                row[x] = ToPixel(pen.colour);
            else if (pen.gap)
                row[x] = ToPixel(*pen.gap);
        }
    }
}

std::uint32_t Blend(std::uint32_t under, std::uint32_t over, unsigned alpha) {
    if (alpha == 255) return over | 0xFF000000u;
    const auto mix = [alpha](unsigned from, unsigned to) {
        return (from * (255u - alpha) + to * alpha + 127u) / 255u;
    };
    return 0xFF000000u | mix(under >> 16 & 255u, over >> 16 & 255u) << 16 |
           mix(under >> 8 & 255u, over >> 8 & 255u) << 8 | mix(under & 255u, over & 255u);
}

// How far each row of the shape is set in from its left and right edge.
std::vector<int> RowInsets(SIZE size, SIZE corner) {
    std::vector<int> insets(static_cast<std::size_t>(size.cy), 0);
    const double rx = std::min(corner.cx, size.cx) / 2.0;
    const double ry = std::min(corner.cy, size.cy) / 2.0;
    if (rx <= 0 || ry <= 0) return insets;
    for (int i = 0; i < size.cy; ++i) {
        const double fromEdge = std::min(i, size.cy - 1 - i) + 0.5;
        if (fromEdge >= ry) continue;
        const double t = (ry - fromEdge) / ry;
        insets[static_cast<std::size_t>(i)] = static_cast<int>(rx - rx * std::sqrt(1 - t * t));
    }
    return insets;
}

}  // namespace

SurfaceGraphics::SurfaceGraphics(Surface& surface) : surface_(surface), clip_(surface.Bounds()) {}

void SurfaceGraphics::SetClip(const std::optional<RECT>& clip) {
    clip_ = clip ? Intersection(*clip, surface_.Bounds()) : surface_.Bounds();
}

// The part of the rectangle that may be drawn; empty areas are the empty rectangle.
RECT SurfaceGraphics::Touch(const RECT& rect) {
    const RECT area = Intersection(rect, clip_);
    touched_ = Union(touched_, area);
    return area;
}

void SurfaceGraphics::FillRect(const RECT& rect, const FillPattern& fill) {
    FillArea(surface_, Touch(rect), fill);
}

void SurfaceGraphics::FlipBits(const RECT& rect, std::uint32_t bits) {
    const RECT area = Touch(rect);
    for (int y = area.top; y < area.bottom; ++y) {
        std::uint32_t* row = surface_.Row(y);
        for (int x = area.left; x < area.right; ++x) row[x] ^= bits;
    }
}

void SurfaceGraphics::InvertRect(const RECT& rect) {
    FlipBits(rect, 0x00FFFFFFu);
}

void SurfaceGraphics::XorRect(const RECT& rect, COLORREF colour) {
    FlipBits(rect, ToPixel(colour) & 0x00FFFFFFu);
}

void SurfaceGraphics::Line(POINT from, POINT to, const LinePattern& pen) {
    if (from.x != to.x && from.y != to.y) return SlantedLine(from, to, pen);
    const RECT area = Touch(StraightLineRect(from, to, pen.width));
    DrawStraight(surface_, area, from.y == to.y, pen);
}

// Walks the longer axis inside the clip, so that far ends cost nothing.
void SurfaceGraphics::SlantedLine(POINT from, POINT to, const LinePattern& pen) {
    const std::int64_t dx = std::int64_t{to.x} - from.x;
    const std::int64_t dy = std::int64_t{to.y} - from.y;
    const bool steep = std::llabs(dy) > std::llabs(dx);
    const std::int64_t length = steep ? dy : dx;
    const std::int64_t rise = steep ? dx : dy;
    const int start = steep ? from.y : from.x;
    const int low = steep ? clip_.top : clip_.left;
    const int high = steep ? clip_.bottom : clip_.right;
    const std::int64_t end = start + length + (length > 0 ? -1 : 1);  // included
    const std::int64_t first = std::min<std::int64_t>(start, end);
    const std::int64_t last = std::max<std::int64_t>(start, end);
    const Dashes dashes = DashesOf(pen.style);
    for (auto i = static_cast<int>(std::max<std::int64_t>(first, low)); i <= last && i < high;
         ++i) {
        const double across = static_cast<double>(rise) * (i - start) / static_cast<double>(length);
        const int other = (steep ? from.x : from.y) + static_cast<int>(std::lround(across));
        const bool marked = IsMarked(dashes, i);
        if (!marked && !pen.gap) continue;
        const int side = other - (pen.width - 1) / 2;
        const RECT dot =
            steep ? RECT{side, i, side + pen.width, i + 1} : RECT{i, side, i + 1, side + pen.width};
        FillSolid(surface_, Touch(dot), marked ? pen.colour : *pen.gap);
    }
}

void SurfaceGraphics::RoundRect(const RECT& rect, SIZE corner,
                                const std::optional<LinePattern>& pen,
                                const std::optional<FillPattern>& fill) {
    if (rect.IsRectEmpty()) return;
    const RECT visible = Touch(rect);
    const std::vector<int>& insets = InsetsOf(rect.Size(), corner);
    const int height = rect.Height();
    const auto inset = [&](int row) { return insets[static_cast<std::size_t>(row)]; };
    for (int y = visible.top; y < visible.bottom; ++y) {
        const int i = y - rect.top;
        const int left = rect.left + inset(i);
        const int right = rect.right - inset(i);
        const auto span = [&](int from, int to, const FillPattern& pattern) {
            from = std::max(from, visible.left);
            to = std::min(to, visible.right);
            if (from < to) FillArea(surface_, {from, y, to, y + 1}, pattern);
        };
        if (!pen) {
            if (fill) span(left, right, *fill);
            continue;
        }
        const bool edge = i < pen->width || i >= height - pen->width;
        // Down to where the row nearer to the edge begins, so that the outline has no gaps.
        const int outer = edge ? right - left : inset(i < height / 2 ? i - 1 : i + 1) - inset(i);
        const int run = std::min(std::max(outer, pen->width), right - left);
        if (fill) span(left + run, right - run, *fill);
        span(left, left + run, {pen->colour, kHatchNone, {}});
        span(right - run, right, {pen->colour, kHatchNone, {}});
    }
}

// Marks are drawn by the thousand in one size.
const std::vector<int>& SurfaceGraphics::InsetsOf(SIZE size, SIZE corner) {
    if (insets_.empty() || size != insetSize_ || corner != insetCorner_) {
        insets_ = RowInsets(size, corner);
        insetSize_ = size;
        insetCorner_ = corner;
    }
    return insets_;
}

void SurfaceGraphics::Text(POINT at, std::string_view utf8, const TextStyle& style) {
    if (utf8.empty()) return;
    const TextMask& mask = RenderedText(style.font, utf8);
    const RECT before = clip_;
    if (style.clip) clip_ = Intersection(*style.clip, clip_);
    if (style.background) FillSolid(surface_, Touch(RectAt(at, mask.extent)), *style.background);
    const POINT origin = at + mask.offset;
    const RECT area = Touch(RectAt(origin, mask.size));
    const std::uint32_t pixel = ToPixel(style.colour);
    for (int y = area.top; y < area.bottom; ++y) {
        std::uint32_t* row = surface_.Row(y);
        const std::uint8_t* coverage =
            mask.coverage.data() + static_cast<std::ptrdiff_t>(y - origin.y) * mask.size.cx;
        for (int x = area.left; x < area.right; ++x)
            if (const unsigned alpha = coverage[x - origin.x]) row[x] = Blend(row[x], pixel, alpha);
    }
    clip_ = before;
}

void SurfaceGraphics::Image(POINT at, SIZE size, const std::uint32_t* pixels) {
    const RECT area = Touch(RectAt(at, size));
    for (int y = area.top; y < area.bottom; ++y) {
        std::uint32_t* row = surface_.Row(y);
        const std::uint32_t* from = pixels + static_cast<std::ptrdiff_t>(y - at.y) * size.cx;
        for (int x = area.left; x < area.right; ++x) {
            const std::uint32_t over = from[x - at.x];
            if (const unsigned alpha = over >> 24) row[x] = Blend(row[x], over, alpha);
        }
    }
}

SIZE SurfaceGraphics::TextExtent(const LOGFONT& font, std::string_view utf8) {
    return TextExtentOf(font, utf8);
}

TEXTMETRIC SurfaceGraphics::Metrics(const LOGFONT& font) {
    return MetricsOf(font);
}

}  // namespace kvx
