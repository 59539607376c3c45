#include <gtest/gtest.h>

#include <deque>

#include "platform/win32/Convert.h"
#include "support/toolkit/Toolkit.h"

namespace kvx::test {
namespace {

constexpr win::LPARAM kAltHeld = win::LPARAM{1} << 29;

void SendMouse(HWND window, UINT message, UINT buttons, POINT at) {
    const auto packed = static_cast<win::LPARAM>((static_cast<std::uint32_t>(at.y) << 16) |
                                                 (static_cast<std::uint32_t>(at.x) & 0xFFFFu));
    win::SendMessageW(win32::ToSystem(window), message, buttons, packed);
}

void HoldAlt(bool held) {
    unsigned char keys[256] = {};
    win::GetKeyboardState(keys);
    keys[VK_MENU] = held ? 0x80 : 0;
    win::SetKeyboardState(keys);
}

std::deque<std::function<void()>> g_soon;

void CALLBACK RunNext(win::HWND, UINT, win::UINT_PTR timer, win::DWORD) {
    win::KillTimer(nullptr, timer);
    const auto action = std::move(g_soon.front());
    g_soon.pop_front();
    action();
}

const std::function<void()>* g_look = nullptr;

void CALLBACK LookAndEnd(win::HWND, UINT, win::UINT_PTR timer, win::DWORD) {
    win::KillTimer(nullptr, timer);
    (*g_look)();
    win::EndMenu();
}

}  // namespace

void PressMouse(HWND window, POINT at) {
    SendMouse(window, WM_LBUTTONDOWN, MK_LBUTTON, at);
}

void MoveMouse(HWND window, POINT at) {
    SendMouse(window, WM_MOUSEMOVE, MK_LBUTTON, at);
}

void ReleaseMouse(HWND window, POINT at) {
    SendMouse(window, WM_LBUTTONUP, 0, at);
}

void PressAltKey(HWND window, UINT key) {
    HoldAlt(true);
    win::SendMessageW(win32::ToSystem(window), WM_SYSKEYDOWN, VK_MENU, kAltHeld);
    win::SendMessageW(win32::ToSystem(window), WM_SYSKEYDOWN, key, kAltHeld);
}

void ReleaseAlt(HWND window) {
    HoldAlt(false);
    win::SendMessageW(win32::ToSystem(window), WM_SYSKEYUP, VK_MENU, 0);
}

void TypeKey(UINT key) {
    const win::HWND focus = win::GetFocus();
    win::PostMessageW(focus, WM_KEYDOWN, key, 0);
    win::PostMessageW(focus, WM_KEYUP, key, win::LPARAM{3} << 30);
    Settle();
}

void AnswerBox(UINT id) {
    const win::HWND box = win::GetActiveWindow();
    const win::HWND button = win::GetDlgItem(box, static_cast<int>(id));
    ASSERT_NE(button, nullptr);
    win::SendMessageW(button, BM_CLICK, 0, 0);
}

void ChooseInMenu(int index) {
    const win::HWND owner = win::GetActiveWindow();
    for (int i = 0; i <= index; ++i) win::PostMessageW(owner, WM_KEYDOWN, VK_DOWN, 0);
    win::PostMessageW(owner, WM_KEYDOWN, VK_RETURN, 0);
}

void Soon(std::function<void()> action) {
    g_soon.push_back(std::move(action));
    win::SetTimer(nullptr, 0, 1, RunNext);
}

// The mouse of the screen rests somewhere, and tells of it when windows come and go.
void Settle() {
    win::MSG message = {};
    while (win::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message >= WM_MOUSEFIRST && message.message <= WM_MOUSELAST) continue;
        win::TranslateMessage(&message);
        win::DispatchMessageW(&message);
    }
}

Surface ScreenOf(HWND window) {
    const win::HWND handle = win32::ToSystem(window);
    win::RECT client = {};
    win::GetClientRect(handle, &client);
    const SIZE size = win32::ToRect(client).Size();
    const win::HDC screen = win::GetDCEx(handle, nullptr, DCX_CACHE);
    const win::HDC copy = win::CreateCompatibleDC(screen);
    const win::HBITMAP bitmap = win::CreateCompatibleBitmap(screen, size.cx, size.cy);
    const win::HGDIOBJ before = win::SelectObject(copy, bitmap);
    win::BitBlt(copy, 0, 0, size.cx, size.cy, screen, 0, 0, SRCCOPY);
    win::SelectObject(copy, before);
    Surface picture(size, 0);
    win::BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = size.cx;
    info.bmiHeader.biHeight = -size.cy;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    win::GetDIBits(copy, bitmap, 0, static_cast<UINT>(size.cy), picture.Row(0), &info,
                   DIB_RGB_COLORS);
    win::DeleteDC(copy);
    win::DeleteObject(bitmap);
    win::ReleaseDC(handle, screen);
    return picture;
}

// A modal dialog of the system disables its owner; a menu runs its own loop.
void WhileBehind(HWND window, bool menu, const std::function<void()>& look) {
    const win::HWND top = win::GetAncestor(win32::ToSystem(window), GA_ROOT);
    if (!menu) {
        win::EnableWindow(top, 0);
        look();
        win::EnableWindow(top, 1);
        return;
    }
    const win::HMENU shown = win::CreatePopupMenu();
    win::AppendMenuW(shown, 0, 1, L"Item");
    g_look = &look;
    win::SetTimer(nullptr, 0, 1, LookAndEnd);
    win::TrackPopupMenuEx(shown, TPM_RETURNCMD, 0, 0, top, nullptr);
    win::DestroyMenu(shown);
}

bool SetDarkDesktop(bool) {
    return false;
}

}  // namespace kvx::test
