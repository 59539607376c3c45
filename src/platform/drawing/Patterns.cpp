#include "platform/drawing/Patterns.h"

#include <algorithm>
#include <array>

#include "platform/drawing/Brush.h"
#include "platform/drawing/Pen.h"

namespace kvx {

namespace {

constexpr int kHatchPeriod = 8;
constexpr int kMaxPeriod = 64;  // bits of a row
constexpr int kHatches = 6;

bool IsMarked(int hatch, int x, int y, int period, int line) {
    const int middle = period / 2;
    const bool horizontal = y >= middle && y < middle + line;
    const bool vertical = x >= middle && x < middle + line;
    const bool falling = (x - y + period) % period < line;
    const bool rising = (x + y + 1) % period < line;
    switch (hatch) {
        case HS_HORIZONTAL:
            return horizontal;
        case HS_VERTICAL:
            return vertical;
        case HS_FDIAGONAL:
            return falling;
        case HS_BDIAGONAL:
            return rising;
        case HS_CROSS:
            return horizontal || vertical;
        default:
            return falling || rising;
    }
}

HatchTile MakeTile(int hatch, int period, int line) {
    HatchTile tile{period, std::vector<std::uint64_t>(static_cast<std::size_t>(period), 0)};
    for (int y = 0; y < period; ++y)
        for (int x = 0; x < period; ++x)
            if (IsMarked(hatch, x, y, period, line))
                tile.rows[static_cast<std::size_t>(y)] |= std::uint64_t{1} << x;
    return tile;
}

}  // namespace

const HatchTile& HatchTileOf(int hatch, const PixelGrid& grid) {
    static std::array<HatchTile, kHatches> tiles;
    HatchTile& tile = tiles[static_cast<std::size_t>(std::clamp(hatch, 0, kHatches - 1))];
    const int period = std::clamp(grid.Length(kHatchPeriod), 2, kMaxPeriod);
    if (tile.period != period) tile = MakeTile(hatch, period, grid.PenWidth(1));
    return tile;
}

Dashes DashesOf(int style, const PixelGrid& grid) {
    const auto dashes = [&grid](int on, int off) {
        const int marked = std::max(grid.Length(on), 1);
        return Dashes{marked, marked + std::max(grid.Length(off), 1)};
    };
    if (style == PS_DOT) return dashes(3, 3);
    if (style == PS_DASH) return dashes(18, 6);
    return {1, 1};
}

}  // namespace kvx
