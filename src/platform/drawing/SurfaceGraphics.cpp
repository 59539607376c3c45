#include "platform/drawing/SurfaceGraphics.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "platform/base/Rects.h"
#include "platform/drawing/Patterns.h"
#include "platform/drawing/TextCache.h"

namespace kvx {

namespace {

constexpr std::size_t kMaxShapes = 8;

void FillSolid(Surface& surface, const RECT& area, COLORREF colour) {
    const std::uint32_t pixel = ToPixel(colour);
    for (int y = area.top; y < area.bottom; ++y)
        std::fill_n(surface.Row(y) + area.left, area.Width(), pixel);
}

void FillHatched(Surface& surface, const RECT& area, const FillPattern& fill) {
    const std::uint32_t pixel = ToPixel(fill.colour);
    const HatchTile& tile = HatchTileOf(fill.hatch, surface.Grid());
    for (int y = area.top; y < area.bottom; ++y) {
        std::uint32_t* row = surface.Row(y);
        const std::uint64_t bits = tile.rows[static_cast<std::size_t>(y % tile.period)];
        int phase = area.left % tile.period;
        for (int x = area.left; x < area.right; ++x) {
            if (bits >> phase & 1)
                row[x] = pixel;
            else if (fill.gap)
                row[x] = ToPixel(*fill.gap);
            if (++phase == tile.period) phase = 0;
        }
    }
}

void FillArea(Surface& surface, const RECT& area, const FillPattern& fill) {
    if (fill.hatch == kHatchNone)
        FillSolid(surface, area, fill.colour);
    else
        FillHatched(surface, area, fill);
}

// The points of a line along its axis, first to last.
struct Span {
    int first;
    int end;  // excluded
};

// The last point is left out, wherever the line begins.
Span SpanOf(int from, int to) {
    return from <= to ? Span{from, to} : Span{to + 1, from + 1};
}

// A horizontal or vertical line, in device pixels. It is as wide as the pen from the edge of its
// first logical pixel.
RECT StraightLineRect(POINT from, POINT to, int width, const PixelGrid& grid) {
    const int before = (width - 1) / 2;
    const int side = grid.PenWidth(width);
    if (from.y == to.y) {
        const auto [first, end] = SpanOf(from.x, to.x);
        const RECT line = grid.ToDevice(RECT{first, from.y - before, end, from.y});
        return {line.left, line.top, line.right, line.top + side};
    }
    const auto [first, end] = SpanOf(from.y, to.y);
    const RECT line = grid.ToDevice(RECT{from.x - before, first, from.x, end});
    return {line.left, line.top, line.left + side, line.bottom};
}

void DrawStraight(Surface& surface, const RECT& area, bool horizontal, const LinePattern& pen) {
    if (pen.style == PS_SOLID) return FillSolid(surface, area, pen.colour);
    const Dashes dashes = DashesOf(pen.style, surface.Grid());
    const auto next = [&dashes](int phase) { return ++phase == dashes.period ? 0 : phase; };
    int rowPhase = area.top % dashes.period;
    for (int y = area.top; y < area.bottom; ++y, rowPhase = next(rowPhase)) {
        std::uint32_t* row = surface.Row(y);
        int phase = horizontal ? area.left % dashes.period : rowPhase;
        for (int x = area.left; x < area.right; ++x) {
            if (phase < dashes.on)
                row[x] = ToPixel(pen.colour);
            else if (pen.gap)
                row[x] = ToPixel(*pen.gap);
            if (horizontal) phase = next(phase);
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

// The rows of a rounded rectangle, from the top. pen: width of its outline, 0 for none.
std::vector<ShapeRow> RowsOfShape(SIZE size, SIZE corner, int pen) {
    std::vector<ShapeRow> rows(static_cast<std::size_t>(size.cy));
    const double rx = std::min(corner.cx, size.cx) / 2.0;
    const double ry = std::min(corner.cy, size.cy) / 2.0;
    const auto inset = [&](int row) {
        const double fromEdge = std::min(row, size.cy - 1 - row) + 0.5;
        if (rx <= 0 || fromEdge >= ry) return 0;
        const double t = (ry - fromEdge) / ry;
        return static_cast<int>(rx - rx * std::sqrt(1 - t * t));
    };
    for (int i = 0; i < size.cy; ++i) {
        ShapeRow& row = rows[static_cast<std::size_t>(i)];
        row.inset = inset(i);
        if (pen == 0) continue;
        const int length = size.cx - 2 * row.inset;
        const bool edge = i < pen || i >= size.cy - pen;
        // Down to where the row nearer to the edge begins, so that the outline has no gaps.
        const int outer = edge ? length : inset(i < size.cy / 2 ? i - 1 : i + 1) - row.inset;
        row.outline = std::min(std::max(outer, pen), length);
    }
    return rows;
}

}  // namespace

SurfaceGraphics::SurfaceGraphics(Surface& surface)
    : surface_(surface), grid_(surface.Grid()), clip_(surface.DeviceBounds()) {}

void SurfaceGraphics::SetClip(const std::optional<RECT>& clip) {
    const RECT whole = surface_.DeviceBounds();
    clip_ = clip ? Intersection(grid_.ToDevice(*clip), whole) : whole;
}

// The part of the rectangle that may be drawn; empty areas are the empty rectangle.
RECT SurfaceGraphics::Touch(const RECT& device) {
    const RECT area = Intersection(device, clip_);
    touched_ = Union(touched_, area);
    return area;
}

void SurfaceGraphics::FillRect(const RECT& rect, const FillPattern& fill) {
    FillArea(surface_, Touch(grid_.ToDevice(rect)), fill);
}

void SurfaceGraphics::FlipBits(const RECT& rect, std::uint32_t bits) {
    const RECT area = Touch(grid_.ToDevice(rect));
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
    const RECT area = Touch(StraightLineRect(from, to, pen.width, grid_));
    DrawStraight(surface_, area, from.y == to.y, pen);
}

// Walks the longer axis inside the clip, so that far ends cost nothing.
void SurfaceGraphics::SlantedLine(POINT from, POINT to, const LinePattern& pen) {
    const std::int64_t dx = std::int64_t{to.x} - from.x;
    const std::int64_t dy = std::int64_t{to.y} - from.y;
    const bool steep = std::llabs(dy) > std::llabs(dx);
    const auto rise = static_cast<double>(steep ? dx : dy);
    const std::int64_t length = steep ? dy : dx;
    const auto along = [&](std::int64_t at) { return steep ? grid_.Y(at) : grid_.X(at); };
    const std::int64_t start = steep ? from.y : from.x;
    // Device pixels: where the first point begins, seen in the line's direction, and all of them.
    const std::int64_t begin = length > 0 ? along(start) : along(start + 1) - 1;
    const std::int64_t first = length > 0 ? begin : along(start + length + 1);
    const std::int64_t last = length > 0 ? along(start + length) - 1 : begin;
    const std::int64_t side = std::int64_t{steep ? from.x : from.y} - (pen.width - 1) / 2;
    const std::int64_t beside = steep ? grid_.X(side) : grid_.Y(side);
    const int width = grid_.PenWidth(pen.width);
    const Dashes dashes = DashesOf(pen.style, grid_);
    const int low = steep ? clip_.top : clip_.left;
    const int high = steep ? clip_.bottom : clip_.right;
    for (auto i = static_cast<int>(std::max<std::int64_t>(first, low)); i <= last && i < high;
         ++i) {
        const bool marked = dashes.Marks(i);
        if (!marked && !pen.gap) continue;
        const double across = rise * static_cast<double>(i - begin) / static_cast<double>(length);
        const auto edge = static_cast<int>(beside + std::llround(across));
        const RECT dot =
            steep ? RECT{edge, i, edge + width, i + 1} : RECT{i, edge, i + 1, edge + width};
        FillSolid(surface_, Touch(dot), marked ? pen.colour : *pen.gap);
    }
}

void SurfaceGraphics::RoundRect(const RECT& rect, SIZE corner,
                                const std::optional<LinePattern>& pen,
                                const std::optional<FillPattern>& fill) {
    const RECT shape = grid_.ToDevice(rect);
    if (shape.IsRectEmpty()) return;
    const RECT visible = Touch(shape);
    const std::vector<ShapeRow>& rows =
        RowsOf(shape.Size(), {grid_.Length(corner.cx), grid_.Length(corner.cy)},
               pen ? grid_.PenWidth(pen->width) : 0);
    const FillPattern outline{pen ? pen->colour : 0, kHatchNone, {}};
    for (int y = visible.top; y < visible.bottom; ++y) {
        const ShapeRow& row = rows[static_cast<std::size_t>(y - shape.top)];
        const int left = shape.left + row.inset;
        const int right = shape.right - row.inset;
        const auto span = [&](int from, int to, const FillPattern& pattern) {
            from = std::max(from, visible.left);
            to = std::min(to, visible.right);
            if (from < to) FillArea(surface_, {from, y, to, y + 1}, pattern);
        };
        if (fill) span(left + row.outline, right - row.outline, *fill);
        span(left, left + row.outline, outline);
        span(right - row.outline, right, outline);
    }
}

// Marks are drawn by the thousand, in one size or, between the pixels of the screen, in a few.
const std::vector<ShapeRow>& SurfaceGraphics::RowsOf(SIZE size, SIZE corner, int pen) {
    const auto known = std::ranges::find_if(shapes_, [&](const Shape& shape) {
        return shape.size == size && shape.corner == corner && shape.pen == pen;
    });
    if (known != shapes_.end()) return known->rows;
    if (shapes_.size() >= kMaxShapes) shapes_.clear();
    shapes_.push_back({size, corner, pen, RowsOfShape(size, corner, pen)});
    return shapes_.back().rows;
}

void SurfaceGraphics::Cell(const RECT& rect, const CellLook& look) {
    CellLook lines = look;
    lines.border = {grid_.PenWidth(look.border.cx), grid_.PenWidth(look.border.cy)};
    for (const auto& [part, colour] : PartsOfCell(grid_.ToDevice(rect), lines))
        FillSolid(surface_, Touch(part), colour);
}

void SurfaceGraphics::Text(POINT at, std::string_view utf8, const TextStyle& style) {
    if (utf8.empty()) return;
    const TextMask& mask = RenderedText(style.font, utf8, grid_.Ratio());
    const RECT before = clip_;
    if (style.clip) clip_ = Intersection(grid_.ToDevice(*style.clip), clip_);
    const RECT cell = grid_.ToDevice(RectAt(at, mask.extent));
    if (style.background) FillSolid(surface_, Touch(cell), *style.background);
    const POINT origin = cell.TopLeft() + mask.offset;
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

// Each pixel of the image fills its logical pixel.
void SurfaceGraphics::Image(POINT at, SIZE size, const std::uint32_t* pixels) {
    for (int i = 0; i < size.cx * size.cy; ++i) {
        const unsigned alpha = pixels[i] >> 24;
        if (alpha == 0) continue;
        const POINT corner = at + POINT{i % size.cx, i / size.cx};
        const RECT area = Touch(grid_.ToDevice(RectAt(corner, {1, 1})));
        for (int y = area.top; y < area.bottom; ++y) {
            std::uint32_t* row = surface_.Row(y);
            for (int x = area.left; x < area.right; ++x) row[x] = Blend(row[x], pixels[i], alpha);
        }
    }
}

SIZE SurfaceGraphics::TextExtent(const LOGFONT& font, std::string_view utf8) {
    return TextExtentOf(font, utf8, grid_.Ratio());
}

TEXTMETRIC SurfaceGraphics::Metrics(const LOGFONT& font) {
    return MetricsOf(font);
}

}  // namespace kvx
