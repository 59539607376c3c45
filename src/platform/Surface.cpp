#include "platform/Surface.h"

#include <algorithm>

namespace kvx {

void Surface::Resize(SIZE size, COLORREF fill) {
    size = {std::max(size.cx, 0), std::max(size.cy, 0)};
    if (size == size_) return;
    const auto count = static_cast<std::size_t>(size.cx) * static_cast<std::size_t>(size.cy);
    std::vector<std::uint32_t> pixels(count, ToPixel(fill));
    const int width = std::min(size.cx, size_.cx);
    for (int y = 0; y < std::min(size.cy, size_.cy); ++y) {
        const auto start = static_cast<std::ptrdiff_t>(y) * size.cx;
        std::copy_n(Row(y), width, pixels.begin() + start);
    }
    pixels_ = std::move(pixels);
    size_ = size;
}

}  // namespace kvx
