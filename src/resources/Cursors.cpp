#include "host/CommandIds.h"
#include "resources/Icons.h"
#include "resources/Tables.h"

namespace kvx::resources {
namespace {

// A line being carried: an arrow over a bar, with an arrowhead above and below.
// clang-format off
constexpr IconText kIconLineDrag = {
    ".......kk.......",
    "......kkkk......",
    ".....kkkkkk.....",
    "................",
    "wwwwwwwwwwwwwwww",
    "wkkkkkkkkkkkkkkw",
    "wkbbbbbbbbbbbbkw",
    "wkbbbbbbbbbbbbkw",
    "wkbbbbbbbbbbbbkw",
    "wkkkkkkkkkkkkkkw",
    "wwwwwwwwwwwwwwww",
    "................",
    ".....kkkkkk.....",
    "......kkkk......",
    ".......kk.......",
    "................"};
// clang-format on

constexpr auto kLineDragPixels = MakeStrip(std::array<IconText, 1>{kIconLineDrag});

constexpr CursorResource kCursors[] = {
    {ids::kCursorLineDrag, kIconSize, kIconSize, 7, 7, kLineDragPixels.data()},
};

}  // namespace

std::span<const CursorResource> Cursors() {
    return kCursors;
}

}  // namespace kvx::resources
