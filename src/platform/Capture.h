#pragma once
// Pictures of windows, with or without a display.

#include "platform/Types.h"

// Writes the window and everything in it, as it would stand on the screen, as a PNG file; paints
// what is not painted yet. False when the window is gone or the file cannot be written.
bool CaptureWindow(HWND window, const CString& pngPath);
