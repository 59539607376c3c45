#pragma once
// A picture in memory: what every window paints into and what the screen shows. Its size is told in
// logical pixels; its pixels are those of the screen, as its grid says. A pixel is 0xFFRRGGBB; they
// stand row by row without gaps.

#include <cstddef>
#include <vector>

#include "platform/base/Types.h"
#include "platform/drawing/PixelGrid.h"

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
    Surface(SIZE size, COLORREF fill, const PixelGrid& grid = {}) : grid_(grid) {
        Resize(size, fill);
    }

    // Keeps what is in both sizes; new pixels get the colour. Negative sizes count as 0.
    void Resize(SIZE size, COLORREF fill);
    // Logical pixels.
    SIZE Size() const { return size_; }
    const PixelGrid& Grid() const { return grid_; }

    // Device pixels from here on.
    SIZE DeviceSize() const { return device_; }
    RECT DeviceBounds() const { return {0, 0, device_.cx, device_.cy}; }
    std::uint32_t* Row(int y) { return pixels_.data() + Offset(y); }
    const std::uint32_t* Row(int y) const { return pixels_.data() + Offset(y); }
    const std::uint32_t* Data() const { return pixels_.data(); }
    // The colour of one pixel inside the bounds.
    COLORREF At(int x, int y) const { return FromPixel(Row(y)[x]); }

  private:
    std::size_t Offset(int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(device_.cx);
    }
    PixelGrid grid_;
    SIZE size_;
    SIZE device_;
    std::vector<std::uint32_t> pixels_;
};

}  // namespace kvx
