#pragma once
// The patterns of hatches and pens, in device pixels: as wide as the ratio makes them, with lines
// of whole pixels.

#include <vector>

#include "platform/drawing/PixelGrid.h"

namespace kvx {

// One period of a hatch in both directions: bit x of row y says whether the pixel is marked.
struct HatchTile {
    int period = 0;
    std::vector<std::uint64_t> rows;
};
// hatch: HS_. The reference holds until the next call.
const HatchTile& HatchTileOf(int hatch, const PixelGrid& grid);

// Marks and gaps of a pen along its line.
struct Dashes {
    int on;
    int period;
    bool Marks(int along) const {
        const int phase = along % period;
        return (phase < 0 ? phase + period : phase) < on;
    }
};
// style: PS_; a solid pen is all mark.
Dashes DashesOf(int style, const PixelGrid& grid);

}  // namespace kvx
