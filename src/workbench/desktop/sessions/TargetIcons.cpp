#include "workbench/desktop/sessions/TargetIcons.h"

#include <array>
#include <cmath>

#include "workbench/desktop/docking/ToolbarIcon.h"

namespace kvx::desktop {
namespace {

constexpr int kSide = 16;
constexpr std::uint32_t kGreen = 0xFF2E9E44;
constexpr std::uint32_t kRed = 0xFFD04848;
constexpr std::uint32_t kBlue = 0xFF3F83DB;

// The pixels whose distances from the left edge and from the middle line belong to the shape.
template <class IsInside>
QIcon Make(std::uint32_t colour, IsInside isInside) {
    std::array<std::uint32_t, kSide * kSide> pixels{};
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        const int x = static_cast<int>(i) % kSide;
        const double off = std::abs(static_cast<double>(i / kSide) - 7.5);
        if (isInside(x, off)) pixels[i] = colour;
    }
    return MakeToolbarIcon(pixels.data());
}

}  // namespace

QIcon GoIcon() {
    return Make(kGreen, [](int x, double off) { return x >= 4 && off <= (13 - x) * 0.66; });
}

QIcon StopIcon() {
    return Make(kRed, [](int x, double off) { return x >= 4 && x < 12 && off < 4; });
}

QIcon ResetIcon() {
    return Make(kBlue, [](int x, double off) {
        const bool bar = x >= 3 && x < 5 && off < 6;
        return bar || (x >= 6 && x < 14 && off <= (x - 5) * 0.66);
    });
}

}  // namespace kvx::desktop
