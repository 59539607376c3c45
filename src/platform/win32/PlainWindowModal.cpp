// A window that has to be answered before anything else.

#include <utility>

#include "platform/win32/Convert.h"
#include "platform/win32/MessagePump.h"
#include "platform/win32/PlainWindow.h"

namespace kvx::win32 {

namespace {

win::WINBOOL CALLBACK AddWindow(win::HWND window, win::LPARAM list) {
    reinterpret_cast<std::vector<win::HWND>*>(list)->push_back(window);
    return 1;
}

std::vector<win::HWND> WindowsOfThread() {
    std::vector<win::HWND> windows;
    win::EnumThreadWindows(win::GetCurrentThreadId(), AddWindow,
                           reinterpret_cast<win::LPARAM>(&windows));
    return windows;
}

bool IsOwnedBy(win::HWND window, win::HWND owner) {
    for (; window; window = win::GetWindow(window, GW_OWNER))
        if (window == owner) return true;
    return false;
}

}  // namespace

void PlainWindow::Block() {
    for (const win::HWND window : WindowsOfThread()) {
        if (!win::IsWindowVisible(window) || !win::IsWindowEnabled(window)) continue;
        if (IsOwnedBy(window, Handle())) continue;
        win::EnableWindow(window, 0);
        blocked_.push_back(window);
    }
}

void PlainWindow::Unblock() {
    for (const win::HWND window : std::exchange(blocked_, {}))
        if (win::IsWindow(window)) win::EnableWindow(window, 1);
}

void PlainWindow::RunModal() {
    const auto keep = Of(Handle());
    modal_ = true;
    Block();
    win::ShowWindow(Handle(), SW_SHOW);
    win::SetActiveWindow(Handle());
    RunMessagesWhile([this] { return modal_; });
    modal_ = false;
    Unblock();
}

// The loop looks again when it gets a message.
void PlainWindow::EndModal() {
    if (!std::exchange(modal_, false)) return;
    Unblock();
    win::PostThreadMessageW(win::GetCurrentThreadId(), WM_NULL, 0, 0);
}

}  // namespace kvx::win32
