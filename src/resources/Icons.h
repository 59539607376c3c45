#pragma once
// Icons drawn as text, 16 by 16: one character a pixel, a colour a letter. The colours are middle
// tones, so that an icon reads on a light and on a dark toolbar.

#include <array>
#include <cstdint>
#include <string_view>

namespace kvx::resources {

inline constexpr int kIconSize = 16;
using IconText = std::array<std::string_view, kIconSize>;

constexpr std::uint32_t IconColour(char letter) {
    switch (letter) {
        case 'k':
            return 0xFF6B7785;  // slate
        case 'r':
            return 0xFFD9534F;  // red
        case 'b':
            return 0xFF3D8BD9;  // blue
        case 'g':
            return 0xFF3FA66B;  // green
        case 'y':
            return 0xFFE0A92E;  // amber
        case 'p':
            return 0xFF9B6BD0;  // purple
        case 'w':
            return 0xFFFFFFFF;
        case '.':
            return 0x00000000;
        default:
            throw "unknown icon colour";
    }
}

// The icons side by side as one strip of pixels.
template <std::size_t N>
consteval auto MakeStrip(const std::array<IconText, N>& icons) {
    std::array<std::uint32_t, N * kIconSize * kIconSize> pixels{};
    for (std::size_t icon = 0; icon < N; ++icon) {
        for (std::size_t y = 0; y < kIconSize; ++y) {
            if (icons[icon][y].size() != kIconSize) throw "an icon row is not 16 pixels wide";
            for (std::size_t x = 0; x < kIconSize; ++x) {
                pixels[(y * N + icon) * kIconSize + x] = IconColour(icons[icon][y][x]);
            }
        }
    }
    return pixels;
}

}  // namespace kvx::resources
