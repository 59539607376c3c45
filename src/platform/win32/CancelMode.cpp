#include "platform/win32/CancelMode.h"

#include "platform/win32/OwnWindow.h"

namespace kvx::win32 {

namespace {

constexpr UINT kBackAtOnce = 20;  // milliseconds

win::UINT_PTR g_later = 0;

// The keyboard is the window's, or a window's that it has put beside itself to say how its work
// goes.
bool IsInFront(win::HWND window) {
    win::HWND active = win::GetActiveWindow();
    if (!active || !OwnWindow::Of(active)) return active == window && active;
    for (; active; active = win::GetWindow(active, GW_OWNER))
        if (active == window) return true;
    return false;
}

void Cancel(bool all) {
    for (const auto& own : OwnWindow::All()) {
        const win::HWND window = own->Handle();
        if (own->Kind() != WindowKind::Plain || !win::IsWindowVisible(window)) continue;
        if (all || !IsInFront(win::GetAncestor(window, GA_ROOT))) own->Send(WM_CANCELMODE);
    }
}

// The keyboard often leaves a window only to come back at once: that is looked at when it is done.
void CALLBACK Later(win::HWND, UINT, win::UINT_PTR timer, win::DWORD) {
    win::KillTimer(nullptr, timer);
    g_later = 0;
    Cancel(false);
}

bool IsTopLevel(win::HWND window) {
    return win::GetAncestor(window, GA_ROOT) == window;
}

win::LRESULT CALLBACK OnSent(int code, win::WPARAM wParam, win::LPARAM lParam) {
    const auto& sent = *reinterpret_cast<const win::CWPSTRUCT*>(lParam);
    if (code == HC_ACTION && sent.message == WM_ENTERMENULOOP) Cancel(true);
    if (code == HC_ACTION && sent.message == WM_ENABLE && !sent.wParam && IsTopLevel(sent.hwnd))
        Cancel(true);
    if (code == HC_ACTION && sent.message == WM_ACTIVATE && LOWORD(sent.wParam) == WA_INACTIVE)
        g_later = win::SetTimer(nullptr, g_later, kBackAtOnce, Later);
    return win::CallNextHookEx(nullptr, code, wParam, lParam);
}

}  // namespace

CancelMode::CancelMode()
    : hook_(win::SetWindowsHookExW(WH_CALLWNDPROC, OnSent, nullptr, win::GetCurrentThreadId())) {}

CancelMode::~CancelMode() {
    win::UnhookWindowsHookEx(hook_);
    if (g_later) win::KillTimer(nullptr, g_later);
    g_later = 0;
}

}  // namespace kvx::win32
