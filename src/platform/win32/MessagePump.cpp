#include "platform/win32/MessagePump.h"

#include <vector>

#include "platform/win32/Convert.h"
#include "platform/win32/OwnWindow.h"

namespace kvx::win32 {

namespace {

void Dispatch(const win::MSG& message) {
    win::TranslateMessage(&message);
    win::DispatchMessageW(&message);
}

// The window, and those on the desktop that it owns.
std::vector<win::HWND> Served(win::HWND window) {
    std::vector<win::HWND> served{window};
    for (const auto& own : OwnWindow::All())
        for (win::HWND owner = ToSystem(own->Owner()); owner;
             owner = win::GetWindow(owner, GW_OWNER))
            if (owner == window || win::IsChild(window, owner)) {
                served.push_back(own->Handle());
                break;
            }
    return served;
}

}  // namespace

int RunMessages() {
    win::MSG message = {};
    while (win::GetMessageW(&message, nullptr, 0, 0) > 0) Dispatch(message);
    return static_cast<int>(message.wParam);
}

bool DispatchNext() {
    win::MSG message = {};
    if (win::GetMessageW(&message, nullptr, 0, 0) > 0) {
        Dispatch(message);
        return true;
    }
    win::PostQuitMessage(static_cast<int>(message.wParam));
    return false;
}

void DispatchWaitingFor(win::HWND window) {
    const std::vector<win::HWND> served = window ? Served(window) : std::vector{window};
    win::MSG message = {};
    for (const win::HWND each : served) {
        while ((!each || win::IsWindow(each)) &&
               win::PeekMessageW(&message, each, 0, 0, PM_REMOVE)) {
            if (message.message == WM_QUIT)
                return win::PostQuitMessage(static_cast<int>(message.wParam));
            Dispatch(message);
        }
    }
}

}  // namespace kvx::win32
