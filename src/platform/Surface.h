#pragma once
// A picture in memory: what every window paints into and what the screen shows. Pixels are
// 0xFFRRGGBB, row by row without gaps. One pixel is one logical pixel of the toolkit; a device
// pixel ratio would be this class's and SurfaceGraphics' business alone.

#include <cstddef>
#include <vector>

#include "platform/Types.h"

namespace kvx {

constexpr std::uint32_t ToPixel(COLORREF colour) {
    return 0xFF000000u | (GetRValue(colour) << 16) | (GetGValue(colour) << 8) | GetBValue(colour);
}
constexpr COLORREF FromPixel(std::uint32_t pixel) {
    return RGB(pixel >> 16 & 0xFFu, pixel >> 8 & 0xFFu, pixel & 0xFFu);
}

class Surface {
  public:
    Surface() = default;
    Surface(SIZE size, COLORREF fill) { Resize(size, fill); }

    // Keeps what is in both sizes; new pixels get the colour. Negative sizes count as 0.
    void Resize(SIZE size, COLORREF fill);
    SIZE Size() const { return size_; }
    RECT Bounds() const { return {0, 0, size_.cx, size_.cy}; }
    std::uint32_t* Row(int y) { return pixels_.data() + Offset(y); }
    const std::uint32_t* Row(int y) const { return pixels_.data() + Offset(y); }
    const std::uint32_t* Data() const { return pixels_.data(); }
    // The colour of one pixel inside the bounds.
    COLORREF At(int x, int y) const { return FromPixel(Row(y)[x]); }

  private:
    std::size_t Offset(int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(size_.cx);
    }
    SIZE size_;
    std::vector<std::uint32_t> pixels_;
};

}  // namespace kvx
