#include "platform/win32/FileDrop.h"

#include <vector>

#include "platform/os/windows/Wide.h"

namespace kvx::win32 {

bool TakesFiles(win::HWND window) {
    return (win::GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_ACCEPTFILES) != 0;
}

// Whoever takes the files frees the block.
bool DropFilesOn(win::HWND window, const std::vector<CString>& files) {
    if (!TakesFiles(window)) return false;
    std::wstring paths;
    for (const CString& file : files) (paths += os::Wide(file)) += L'\0';
    paths += L'\0';
    const std::size_t bytes = paths.size() * sizeof(wchar_t);
    const win::HGLOBAL block = win::GlobalAlloc(GHND, sizeof(win::DROPFILES) + bytes);
    if (!block) return false;
    auto* const head = static_cast<win::DROPFILES*>(win::GlobalLock(block));
    head->pFiles = sizeof *head;
    head->fWide = 1;
    std::memcpy(head + 1, paths.data(), bytes);
    win::GlobalUnlock(block);
    win::SendMessageW(window, WM_DROPFILES, reinterpret_cast<win::WPARAM>(block), 0);
    return true;
}

}  // namespace kvx::win32
