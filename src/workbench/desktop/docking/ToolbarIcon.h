#pragma once
// Toolbar pictures of a component, 16 x 16 pixels, as icons that stay crisp and readable.

#include <QIcon>
#include <cstdint>

namespace kvx::desktop {

// pixels: 16 x 16, 0xAARRGGBB, row by row; copied. The icon enlarges by repeating pixels, and
// on a background of similar lightness it mirrors the lightness of what would vanish.
QIcon MakeToolbarIcon(const std::uint32_t* pixels);

}  // namespace kvx::desktop
