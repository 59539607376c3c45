#pragma once
// Window messages and their parameters as values.

#include <string_view>

#include "platform/base/Types.h"

inline constexpr UINT WM_CREATE = 0x0001;   // lParam: const CREATESTRUCT*; -1 fails the creation
inline constexpr UINT WM_DESTROY = 0x0002;  // the window still exists, its children too
inline constexpr UINT WM_MOVE = 0x0003;
inline constexpr UINT WM_SIZE = 0x0005;  // lParam: client width, height
inline constexpr UINT WM_SETFOCUS = 0x0007;
inline constexpr UINT WM_KILLFOCUS = 0x0008;
inline constexpr UINT WM_ENABLE = 0x000A;
inline constexpr UINT WM_SETTEXT = 0x000C;  // lParam: const char*
inline constexpr UINT WM_PAINT = 0x000F;
inline constexpr UINT WM_CLOSE = 0x0010;
inline constexpr UINT WM_ERASEBKGND = 0x0014;  // wParam: CDC*; nonzero: erased
inline constexpr UINT WM_SYSCOLORCHANGE = 0x0015;
inline constexpr UINT WM_SHOWWINDOW = 0x0018;
inline constexpr UINT WM_CANCELMODE = 0x001F;
inline constexpr UINT WM_SETCURSOR = 0x0020;      // nonzero: the cursor is set
inline constexpr UINT WM_GETMINMAXINFO = 0x0024;  // lParam: MINMAXINFO*
inline constexpr UINT WM_SETFONT = 0x0030;        // wParam: const CFont*; lParam: repaint
inline constexpr UINT WM_MEASUREITEM = 0x002C;    // lParam: MEASUREITEMSTRUCT*
inline constexpr UINT WM_CONTEXTMENU = 0x007B;    // lParam: screen point
inline constexpr UINT WM_NCDESTROY = 0x0082;
inline constexpr UINT WM_GETDLGCODE = 0x0087;
inline constexpr UINT WM_KEYDOWN = 0x0100;  // wParam: VK_ code; lParam bit 30: repeated
inline constexpr UINT WM_KEYUP = 0x0101;
inline constexpr UINT WM_CHAR = 0x0102;     // wParam: the character (a code point)
inline constexpr UINT WM_COMMAND = 0x0111;  // MakeCommand; lParam: HWND of the control
inline constexpr UINT WM_INITDIALOG = 0x0110;
inline constexpr UINT WM_HSCROLL = 0x0114;  // wParam: MakeScroll
inline constexpr UINT WM_VSCROLL = 0x0115;
inline constexpr UINT WM_MOUSEMOVE = 0x0200;  // mouse messages: wParam MK_ flags, lParam point
inline constexpr UINT WM_LBUTTONDOWN = 0x0201;
inline constexpr UINT WM_LBUTTONUP = 0x0202;
inline constexpr UINT WM_LBUTTONDBLCLK = 0x0203;
inline constexpr UINT WM_RBUTTONDOWN = 0x0204;
inline constexpr UINT WM_RBUTTONUP = 0x0205;
inline constexpr UINT WM_RBUTTONDBLCLK = 0x0206;
inline constexpr UINT WM_MBUTTONDOWN = 0x0207;
inline constexpr UINT WM_MBUTTONUP = 0x0208;
inline constexpr UINT WM_MOUSEWHEEL = 0x020A;   // MakeWheel; lParam: screen point
inline constexpr UINT WM_MOUSEHWHEEL = 0x020E;  // delta positive: to the right
inline constexpr UINT WM_CAPTURECHANGED = 0x0215;
inline constexpr UINT WM_DROPFILES = 0x0233;  // wParam: HDROP
inline constexpr UINT WM_MOUSELEAVE = 0x02A3;
inline constexpr UINT WM_USER = 0x0400;

// A number for the text, the same in every module of the process and in every process. Above all
// constants of this file.
constexpr UINT RegisterWindowMessage(std::string_view name) {
    std::uint32_t hash = 2166136261u;
    for (const char c : name) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
    return 0xC0000000u | (hash & 0x3FFFFFFFu);
}

// Flags of mouse messages.
inline constexpr UINT MK_LBUTTON = 0x0001;
inline constexpr UINT MK_RBUTTON = 0x0002;
inline constexpr UINT MK_SHIFT = 0x0004;
inline constexpr UINT MK_CONTROL = 0x0008;
inline constexpr UINT MK_MBUTTON = 0x0010;
inline constexpr UINT MK_ALT = 0x0020;

// Requests of scroll bars.
inline constexpr UINT SB_LINEUP = 0;
inline constexpr UINT SB_LINELEFT = 0;
inline constexpr UINT SB_LINEDOWN = 1;
inline constexpr UINT SB_LINERIGHT = 1;
inline constexpr UINT SB_PAGEUP = 2;
inline constexpr UINT SB_PAGELEFT = 2;
inline constexpr UINT SB_PAGEDOWN = 3;
inline constexpr UINT SB_PAGERIGHT = 3;
inline constexpr UINT SB_THUMBPOSITION = 4;
inline constexpr UINT SB_THUMBTRACK = 5;
inline constexpr UINT SB_TOP = 6;
inline constexpr UINT SB_LEFT = 6;
inline constexpr UINT SB_BOTTOM = 7;
inline constexpr UINT SB_RIGHT = 7;
inline constexpr UINT SB_ENDSCROLL = 8;

// Notification codes of controls in WM_COMMAND; 0 is also the code of menus and toolbars.
inline constexpr UINT BN_CLICKED = 0;
inline constexpr UINT EN_CHANGE = 0x0300;
inline constexpr UINT CBN_SELCHANGE = 1;
inline constexpr UINT CBN_EDITCHANGE = 5;
inline constexpr UINT LBN_SELCHANGE = 1;
inline constexpr UINT LBN_DBLCLK = 2;
inline constexpr UINT CLBN_CHKCHANGE = 40;

inline constexpr UINT SIZE_RESTORED = 0;
inline constexpr LRESULT HTCLIENT = 1;
inline constexpr LRESULT DLGC_WANTARROWS = 0x0001;
inline constexpr LRESULT DLGC_WANTALLKEYS = 0x0004;
inline constexpr LRESULT DLGC_WANTCHARS = 0x0080;

struct CREATESTRUCT {
    const char* lpszName = "";
    DWORD style = 0;
    DWORD dwExStyle = 0;
    RECT rect;  // in the parent's client coordinates, or on the screen
    HWND hwndParent = nullptr;
    UINT id = 0;
};

struct MINMAXINFO {
    POINT ptMinTrackSize;
    POINT ptMaxTrackSize{32767, 32767};
};

// Asks an owner how large an item is; the answer is left in the structure.
struct MEASUREITEMSTRUCT {
    UINT CtlType = 0;
    UINT CtlID = 0;
    UINT itemID = 0;
    UINT itemWidth = 0;  // pixels
    UINT itemHeight = 0;
};

struct NMHDR {
    HWND hwndFrom = nullptr;
    UINT idFrom = 0;
    UINT code = 0;
};

constexpr std::uint16_t LOWORD(std::uintptr_t value) {
    return static_cast<std::uint16_t>(value);
}
constexpr std::uint16_t HIWORD(std::uintptr_t value) {
    return static_cast<std::uint16_t>(value >> 16);
}

// Two signed numbers of 32 bits each in one parameter: points, sizes.
constexpr LPARAM MakePointParam(std::int32_t x, std::int32_t y) {
    return static_cast<LPARAM>((static_cast<std::uint64_t>(static_cast<std::uint32_t>(y)) << 32) |
                               static_cast<std::uint32_t>(x));
}
static_assert(sizeof(LPARAM) == 8, "both numbers of a point are kept on every processor");
constexpr std::int32_t ParamX(LPARAM param) {
    return static_cast<std::int32_t>(static_cast<std::uint64_t>(param));
}
constexpr std::int32_t ParamY(LPARAM param) {
    return static_cast<std::int32_t>(static_cast<std::uint64_t>(param) >> 32);
}
constexpr POINT ParamPoint(LPARAM param) {
    return {ParamX(param), ParamY(param)};
}

// WM_HSCROLL, WM_VSCROLL: request and thumb position.
constexpr WPARAM MakeScroll(UINT code, std::int32_t position) {
    return static_cast<WPARAM>(MakePointParam(static_cast<std::int32_t>(code), position));
}
// WM_MOUSEWHEEL: MK_ flags and the delta, 120 a notch, positive away from the user.
constexpr WPARAM MakeWheel(UINT flags, std::int32_t delta) {
    return MakeScroll(flags, delta);
}
// WM_COMMAND: id and notification code.
constexpr WPARAM MakeCommand(UINT id, UINT code = 0) {
    return MakeScroll(id, static_cast<std::int32_t>(code));
}
