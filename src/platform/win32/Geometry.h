#pragma once
// Where windows lie, in logical pixels and in those of the screen.

#include "platform/win32/Screens.h"
#include "platform/win32/System.h"

namespace kvx::win32 {

// The grid of the client area: its corner is counted from that of the window on the desktop.
PixelGrid GridOf(win::HWND window);
// Logical pixels: the corner of the client area on the screen, its size, and the window with its
// edges, in its parent's client area or on the screen.
POINT ClientOriginOf(win::HWND window);
SIZE ClientSizeOf(win::HWND window);
RECT BoundsOf(win::HWND window);

// In the parent's client area.
RECT DeviceBounds(win::HWND window);
RECT Divided(const RECT& device, double ratio);
// Moves the children made here to the pixels where they belong.
void PlaceChildren(win::HWND window);

}  // namespace kvx::win32
