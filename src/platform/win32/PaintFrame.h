#pragma once
// Shows surfaces and edges on the screen.

#include "platform/win32/System.h"

namespace kvx::win32 {

// The client area, all of it: the surface, which may be missing, and the corner between two scroll
// bars.
void PaintClient(win::HDC dc, win::HWND window, const Surface* surface);
// The edges around the client area.
void PaintFrame(win::HWND window, const WindowFrame& frame);

}  // namespace kvx::win32
