#include "platform/drawing/Graphics.h"

#include <algorithm>

namespace kvx {

namespace {

// A cell narrower than its lines has a face that reaches backwards.
RECT Spanned(int x1, int y1, int x2, int y2) {
    return {std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2)};
}

}  // namespace

std::array<CellPart, 5> PartsOfCell(const RECT& r, const CellLook& look) {
    const auto [cx, cy] = look.border;
    return {{
        {Spanned(r.left, r.top, r.right - cy, r.top + cy), look.light},
        {Spanned(r.left, r.top + cy, r.left + cx, r.bottom), look.light},
        {Spanned(r.left + cx, r.bottom - cy, r.right, r.bottom), look.dark},
        {Spanned(r.right - cx, r.top + cy, r.right, r.bottom - cy), look.dark},
        {Spanned(r.left + cx, r.top + cy, r.right - cx, r.bottom - cy), look.face},
    }};
}

void IGraphics::Cell(const RECT& rect, const CellLook& look) {
    for (const CellPart& part : PartsOfCell(rect, look))
        if (!part.rect.IsRectEmpty()) FillRect(part.rect, {part.colour, kHatchNone, {}});
}

}  // namespace kvx
