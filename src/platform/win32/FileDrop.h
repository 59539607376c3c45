#pragma once
// Dropped files for windows that know the system's drops but not the platform layer's.

#include "platform/win32/System.h"

namespace kvx::win32 {

// Whether the window takes dropped files.
bool TakesFiles(win::HWND window);
// Drops the files on the window as if the user had; false when it takes none.
bool DropFilesOn(win::HWND window, const std::vector<CString>& files);

}  // namespace kvx::win32
