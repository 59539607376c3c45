#include "platform/win32/Keys.h"

namespace kvx::win32 {

namespace {

constexpr win::WPARAM kFirstLayoutKey = 0xBA;  // from here on a key is what its layout says
constexpr UINT kKeepDeadKeys = 4;

bool IsDown(int key) {
    return win::GetKeyState(key) < 0;
}

}  // namespace

UINT VirtualKeyOf(win::WPARAM key, win::LPARAM flags) {
    if (key < kFirstLayoutKey) return static_cast<UINT>(key);
    unsigned char state[256] = {};
    win::GetKeyboardState(state);
    wchar_t text[4] = {};
    const auto scan = static_cast<UINT>(flags >> 16) & 0xFFu;
    win::ToUnicode(static_cast<UINT>(key), scan, state, text, 4, kKeepDeadKeys);
    if (text[0] == L'+') return VK_ADD;
    return text[0] == L'-' ? VK_SUBTRACT : 0;
}

UINT MouseFlagsOf(win::WPARAM wParam) {
    constexpr UINT kSame = MK_LBUTTON | MK_RBUTTON | MK_SHIFT | MK_CONTROL | MK_MBUTTON;
    return (static_cast<UINT>(wParam) & kSame) | (IsDown(VK_MENU) ? MK_ALT : 0);
}

UINT MouseFlagsNow() {
    UINT flags = 0;
    if (IsDown(VK_LBUTTON)) flags |= MK_LBUTTON;
    if (IsDown(VK_RBUTTON)) flags |= MK_RBUTTON;
    if (IsDown(VK_MBUTTON)) flags |= MK_MBUTTON;
    if (IsDown(VK_SHIFT)) flags |= MK_SHIFT;
    if (IsDown(VK_CONTROL)) flags |= MK_CONTROL;
    return MouseFlagsOf(flags);
}

bool MoveFocusByTab(win::HWND from) {
    if (IsDown(VK_CONTROL) || IsDown(VK_MENU)) return false;
    const win::HWND top = win::GetAncestor(from, GA_ROOT);
    const win::HWND next = win::GetNextDlgTabItem(top, from, IsDown(VK_SHIFT));
    if (!next || next == from) return false;
    win::SetFocus(next);
    return true;
}

}  // namespace kvx::win32
