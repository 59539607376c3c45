#pragma once
// The one place where values of the platform layer become values of the system and back.

#include <vector>

#include "platform/win32/System.h"

namespace kvx::win32 {

inline win::HWND ToSystem(HWND window) {
    return reinterpret_cast<win::HWND>(window);
}
inline HWND ToHandle(win::HWND window) {
    return reinterpret_cast<HWND>(window);
}

inline win::RECT ToSystem(const RECT& r) {
    return {r.left, r.top, r.right, r.bottom};
}
inline RECT ToRect(const win::RECT& r) {
    return {static_cast<std::int32_t>(r.left), static_cast<std::int32_t>(r.top),
            static_cast<std::int32_t>(r.right), static_cast<std::int32_t>(r.bottom)};
}
inline POINT ToPoint(const win::POINT& p) {
    return {static_cast<std::int32_t>(p.x), static_cast<std::int32_t>(p.y)};
}
// Two signed numbers of 16 bits each in one parameter, as the system packs points.
inline POINT PackedPoint(win::LPARAM param) {
    return {static_cast<std::int16_t>(LOWORD(static_cast<std::uintptr_t>(param))),
            static_cast<std::int16_t>(HIWORD(static_cast<std::uintptr_t>(param)))};
}

// The system's line ends are two characters, ours one.
std::wstring ToLines(const CString& text);
CString FromLines(std::wstring_view text);

// Lives as long as the program; null hides the cursor.
win::HCURSOR ToSystem(HCURSOR cursor);

// The paths of a drop of the system; the handle stays the caller's.
std::vector<CString> FilesOf(win::HDROP drop);

}  // namespace kvx::win32
