#pragma once
// Keys and buttons of the system as those of the platform layer.

#include "platform/win32/System.h"

namespace kvx::win32 {

// VK_ code; 0 for a key that has none. By what the keyboard's layout makes of the key.
UINT VirtualKeyOf(win::WPARAM key, win::LPARAM flags);
// MK_ flags of a mouse message, or as they are now.
UINT MouseFlagsOf(win::WPARAM wParam);
UINT MouseFlagsNow();

// Moves the keyboard to the next window that Tab reaches, or with Shift to the one before; false
// when there is no other.
bool MoveFocusByTab(win::HWND from);

}  // namespace kvx::win32
