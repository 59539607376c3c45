#include "platform/drawing/Surface.h"

#include <algorithm>

namespace kvx {

void Surface::Resize(SIZE size, COLORREF fill) {
    size_ = {std::max(size.cx, 0), std::max(size.cy, 0)};
    const SIZE device = grid_.ToDevice(RECT{0, 0, size_.cx, size_.cy}).Size();
    if (device == device_) return;
    const auto count = static_cast<std::size_t>(device.cx) * static_cast<std::size_t>(device.cy);
    std::vector<std::uint32_t> pixels(count, ToPixel(fill));
    const int width = std::min(device.cx, device_.cx);
    for (int y = 0; y < std::min(device.cy, device_.cy); ++y) {
        const auto start = static_cast<std::ptrdiff_t>(y) * device.cx;
        std::copy_n(Row(y), width, pixels.begin() + start);
    }
    pixels_ = std::move(pixels);
    device_ = device;
}

}  // namespace kvx
