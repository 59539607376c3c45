#include "platform/drawing/Pen.h"

#include <algorithm>

bool CPen::CreatePen(int style, int width, COLORREF colour) {
    width_ = std::max(width, 1);
    const bool patterned = style == PS_DASH || style == PS_DOT;
    style_ = patterned && width_ > 1 ? PS_SOLID : style;
    colour_ = colour;
    return true;
}
