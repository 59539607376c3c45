#pragma once
// Draws into a surface, pixel by pixel; text comes as coverage masks from the back-end. What it is
// told is in logical pixels, what it draws is whole device pixels: areas go from edge to edge of
// the surface's grid, lines stand inside their logical pixels. Patterns of hatches and pens are
// anchored to the surface. Lines wider than one pixel have flat ends.

#include <vector>

#include "platform/drawing/Graphics.h"
#include "platform/drawing/Surface.h"

namespace kvx {

// One row of a rounded rectangle, in device pixels: how far it is set in from the sides, and how
// wide the outline is at either end.
struct ShapeRow {
    int inset = 0;
    int outline = 0;
};

class SurfaceGraphics : public IGraphics {
  public:
    // Borrows the surface.
    explicit SurfaceGraphics(Surface& surface);

    void SetClip(const std::optional<RECT>& clip) override;
    void FillRect(const RECT& rect, const FillPattern& fill) override;
    void InvertRect(const RECT& rect) override;
    void XorRect(const RECT& rect, COLORREF colour) override;
    void Line(POINT from, POINT to, const LinePattern& pen) override;
    void RoundRect(const RECT& rect, SIZE corner, const std::optional<LinePattern>& pen,
                   const std::optional<FillPattern>& fill) override;
    void Cell(const RECT& rect, const CellLook& look) override;
    void Text(POINT at, std::string_view utf8, const TextStyle& style) override;
    void Image(POINT at, SIZE size, const std::uint32_t* pixels) override;
    SIZE TextExtent(const LOGFONT& font, std::string_view utf8) override;
    TEXTMETRIC Metrics(const LOGFONT& font) override;

    // Bounds of everything drawn so far, in whole logical pixels; empty when nothing was.
    RECT Touched() const { return grid_.ToLogical(touched_); }

  private:
    // A rounded rectangle that was drawn before.
    struct Shape {
        SIZE size;
        SIZE corner;
        int pen = 0;
        std::vector<ShapeRow> rows;
    };

    RECT Touch(const RECT& device);
    const std::vector<ShapeRow>& RowsOf(SIZE size, SIZE corner, int pen);
    void FlipBits(const RECT& rect, std::uint32_t bits);
    void SlantedLine(POINT from, POINT to, const LinePattern& pen);

    Surface& surface_;
    const PixelGrid grid_;
    RECT clip_;  // this and what follows in device pixels
    RECT touched_;
    std::vector<Shape> shapes_;
};

}  // namespace kvx
