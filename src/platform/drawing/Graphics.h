#pragma once
// What a device context draws on: the seam below CDC. Coordinates are logical pixels of the
// surface (the context has added its origin already). Rectangles exclude right and bottom, lines
// exclude their last point; nothing is antialiased but text.

#include <array>
#include <optional>
#include <string_view>

#include "platform/base/Types.h"
#include "platform/drawing/Brush.h"
#include "platform/drawing/Font.h"
#include "platform/drawing/Pen.h"

namespace kvx {

struct LinePattern {
    int style = PS_SOLID;  // PS_
    int width = 1;
    COLORREF colour = 0;
    std::optional<COLORREF> gap;  // between dots and dashes; none: left as it is
};

struct FillPattern {
    COLORREF colour = 0;
    int hatch = kHatchNone;       // HS_, or solid
    std::optional<COLORREF> gap;  // between the lines of a hatch; none: left as it is
};

// A raised cell: light lines at the top and left, dark ones at the bottom and right, a face inside.
// The upper right corner belongs to none of them.
struct CellLook {
    SIZE border;  // width of the upright lines, height of the others
    COLORREF light = 0;
    COLORREF dark = 0;
    COLORREF face = 0;
};

struct TextStyle {
    LOGFONT font;
    COLORREF colour = 0;
    std::optional<COLORREF> background;  // fills the text's cell first
    std::optional<RECT> clip;
};

class IGraphics {
  public:
    virtual ~IGraphics() = default;
    // Nothing outside is touched from now on; none: the whole surface.
    virtual void SetClip(const std::optional<RECT>& clip) = 0;
    virtual void FillRect(const RECT& rect, const FillPattern& fill) = 0;
    // Every colour bit turned over.
    virtual void InvertRect(const RECT& rect) = 0;
    // Exclusive-or with the colour: twice restores.
    virtual void XorRect(const RECT& rect, COLORREF colour) = 0;
    virtual void Line(POINT from, POINT to, const LinePattern& pen) = 0;
    // corner: width and height of the ellipse of the corners; 0 x 0 a plain rectangle. No pen or no
    // fill: left out.
    virtual void RoundRect(const RECT& rect, SIZE corner, const std::optional<LinePattern>& pen,
                           const std::optional<FillPattern>& fill) = 0;
    // Five rectangles; a surface of another ratio than 1 makes all lines equally wide.
    virtual void Cell(const RECT& rect, const CellLook& look);
    // at: the top left corner of the text's cell.
    virtual void Text(POINT at, std::string_view utf8, const TextStyle& style) = 0;
    // 0xAARRGGBB pixels, blended.
    virtual void Image(POINT at, SIZE size, const std::uint32_t* pixels) = 0;

    virtual SIZE TextExtent(const LOGFONT& font, std::string_view utf8) = 0;
    virtual TEXTMETRIC Metrics(const LOGFONT& font) = 0;
};

// The rectangles of a cell, each with its colour, in the order in which they are drawn.
struct CellPart {
    RECT rect;
    COLORREF colour;
};
std::array<CellPart, 5> PartsOfCell(const RECT& rect, const CellLook& look);

}  // namespace kvx
