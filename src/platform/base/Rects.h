#pragma once
// Arithmetic of rectangles.

#include <algorithm>

#include "platform/base/Types.h"

namespace kvx {

constexpr RECT Intersection(const RECT& a, const RECT& b) {
    const RECT both{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                    std::min(a.bottom, b.bottom)};
    return both.IsRectEmpty() ? RECT{} : both;
}

// An empty rectangle adds nothing.
constexpr RECT Union(const RECT& a, const RECT& b) {
    if (a.IsRectEmpty()) return b;
    if (b.IsRectEmpty()) return a;
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

constexpr RECT Moved(RECT rect, POINT by) {
    rect.OffsetRect(by);
    return rect;
}

constexpr RECT RectAt(POINT at, SIZE size) {
    return {at.x, at.y, at.x + size.cx, at.y + size.cy};
}

}  // namespace kvx
