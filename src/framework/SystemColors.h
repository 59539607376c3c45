#pragma once
// Named colours on the screen.

#include "host/NamedColors.h"

// The colour to draw with: "SYSTEM" and "HIGHLIGHT" are those of the desktop for text, or for its
// background.
COLORREF ResolveColor(int index, bool background);
