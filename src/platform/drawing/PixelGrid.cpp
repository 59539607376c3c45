#include "platform/drawing/PixelGrid.h"

#include <algorithm>
#include <cmath>

namespace kvx {

namespace {

constexpr double kHair = 1e-6;
constexpr int kFar = 1 << 30;  // beyond every surface
constexpr int kMaxPeriod = 64;

// After how many logical pixels the rounding repeats itself; 0: not soon.
int PeriodOf(double ratio) {
    for (int period = 1; period <= kMaxPeriod; ++period)
        if (std::abs(ratio * period - std::round(ratio * period)) < kHair) return period;
    return 0;
}

// The edge at or before the device position: index of the last one that does not lie behind it.
template <class EdgeAt>
int LastEdgeBefore(int position, double ratio, EdgeAt edgeAt) {
    auto edge = static_cast<std::int64_t>(position / ratio) + 2;
    while (edgeAt(edge) > position) --edge;
    return static_cast<int>(edge);
}

template <class EdgeAt>
int FirstEdgeBehind(int position, double ratio, EdgeAt edgeAt) {
    auto edge = static_cast<std::int64_t>(position / ratio) - 2;
    while (edgeAt(edge) < position) ++edge;
    return static_cast<int>(edge);
}

}  // namespace

PixelGrid::PixelGrid(double ratio, POINT origin) : ratio_(ratio > 0 ? ratio : 1), origin_(origin) {
    const int period = PeriodOf(ratio_);
    if (!period) return;
    const auto phase = [period](int at) { return (at % period + period) % period; };
    origin_ = {phase(origin.x), phase(origin.y)};
}

std::int64_t PixelGrid::Round(double position) {
    return static_cast<std::int64_t>(std::floor(position + 0.5 + kHair));
}

std::int64_t PixelGrid::Distance(std::int64_t edge, int origin) const {
    return Round(static_cast<double>(edge + origin) * ratio_) - Round(origin * ratio_);
}

int PixelGrid::Whole(std::int64_t position) {
    return static_cast<int>(std::clamp<std::int64_t>(position, -kFar, kFar));
}

RECT PixelGrid::ToLogical(const RECT& device) const {
    if (ratio_ == 1 || device.IsRectEmpty()) return device;
    const auto x = [this](std::int64_t edge) { return X(edge); };
    const auto y = [this](std::int64_t edge) { return Y(edge); };
    return {LastEdgeBefore(device.left, ratio_, x), LastEdgeBefore(device.top, ratio_, y),
            FirstEdgeBehind(device.right, ratio_, x), FirstEdgeBehind(device.bottom, ratio_, y)};
}

int PixelGrid::Length(int logical) const {
    return static_cast<int>(Round(logical * ratio_));
}

int PixelGrid::PenWidth(int logical) const {
    return std::max(static_cast<int>(logical * ratio_ + kHair), 1);
}

}  // namespace kvx
