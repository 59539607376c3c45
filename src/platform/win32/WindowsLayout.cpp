// Look, place, visibility and input focus of windows.

#include <algorithm>

#include "platform/win32/Convert.h"
#include "platform/win32/Geometry.h"
#include "platform/win32/PlainWindow.h"
#include "platform/win32/Windows.h"

namespace kvx::win32 {

namespace {

bool IsTop(win::HWND window) {
    return win::GetAncestor(window, GA_ROOT) == window;
}

bool NeverActive(win::HWND window) {
    return (win::GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_NOACTIVATE) != 0;
}

}  // namespace

// The limit of an edit field holds for whoever fills it; the system's holds for the user.
void Win32Windows::SetText(HWND window, const CString& text) {
    const win::HWND handle = ToSystem(window);
    std::wstring shown = ToLines(text);
    const auto own = OwnWindow::Of(handle);
    if (own && own->Kind() == WindowKind::Edit)
        shown.resize(std::min(shown.size(), static_cast<std::size_t>(
                                                win::SendMessageW(handle, EM_GETLIMITTEXT, 0, 0))));
    win::SetWindowTextW(handle, shown.c_str());
}

CString Win32Windows::Text(HWND window) const {
    const win::HWND handle = ToSystem(window);
    std::wstring text(static_cast<std::size_t>(win::GetWindowTextLengthW(handle)), L'\0');
    const int length = win::GetWindowTextW(handle, text.data(), static_cast<int>(text.size()) + 1);
    text.resize(static_cast<std::size_t>(length));
    return FromLines(text);
}

void Win32Windows::SetFont(HWND window, const LOGFONT& font) {
    if (const auto own = OwnWindow::Of(ToSystem(window))) own->SetFont(font);
}

void Win32Windows::SetFrame(HWND window, const WindowFrame& frame) {
    if (const auto plain = PlainWindow::Of(ToSystem(window))) plain->SetFrame(frame);
}

// A modal window gives the others free before it hides, or another program would get the keyboard.
void Win32Windows::Show(HWND window, bool show, bool activate) {
    const win::HWND handle = ToSystem(window);
    if (!show) {
        if (const auto plain = PlainWindow::Of(handle)) plain->Unblock();
        ActivateOwner(handle);
        win::ShowWindow(handle, SW_HIDE);
        return;
    }
    const bool activates = activate && IsTop(handle) && !NeverActive(handle);
    win::ShowWindow(handle, activates ? SW_SHOW : SW_SHOWNA);
}

bool Win32Windows::IsVisible(HWND window) const {
    return win::IsWindowVisible(ToSystem(window));
}

bool Win32Windows::IsShown(HWND window) const {
    return (static_cast<DWORD>(win::GetWindowLongW(ToSystem(window), GWL_STYLE)) & WS_VISIBLE) != 0;
}

// An active window that goes leaves the keyboard to its owner.
void Win32Windows::ActivateOwner(win::HWND window) {
    const win::HWND owner = IsTop(window) ? win::GetWindow(window, GW_OWNER) : nullptr;
    if (owner && win::GetActiveWindow() == window) win::SetActiveWindow(owner);
}

void Win32Windows::Enable(HWND window, bool enable) {
    const win::HWND handle = ToSystem(window);
    if (!enable) KeepFocus(handle);
    win::EnableWindow(handle, enable);
    if (enable) RestoreFocus(handle);
}

void Win32Windows::KeepFocus(win::HWND disabled) {
    const win::HWND focus = win::GetFocus();
    if (!focus || (focus != disabled && !win::IsChild(disabled, focus))) return;
    lostFocus_.push_back({disabled, focus});
    win::SetFocus(nullptr);
}

void Win32Windows::RestoreFocus(win::HWND enabled) {
    for (const LostFocus& lost : lostFocus_)
        if (lost.disabled == enabled && win::IsWindow(lost.focus)) win::SetFocus(lost.focus);
    std::erase_if(lostFocus_, [enabled](const LostFocus& lost) {
        return !win::IsWindow(lost.disabled) || lost.disabled == enabled;
    });
}

bool Win32Windows::IsEnabled(HWND window) const {
    return win::IsWindowEnabled(ToSystem(window));
}

void Win32Windows::SetFocus(HWND window) {
    win::SetFocus(ToSystem(window));
}

// Parts of controls count as the control.
HWND Win32Windows::Focus() const {
    const win::HWND focus = win::GetFocus();
    const win::HWND parent =
        focus && !OwnWindow::Of(focus) ? win::GetAncestor(focus, GA_PARENT) : nullptr;
    return ToHandle(OwnWindow::Of(parent) ? parent : focus);
}

void Win32Windows::SetCapture(HWND window) {
    PlainWindow::MoveCapture(ToSystem(window));
}

void Win32Windows::ReleaseCapture() {
    PlainWindow::MoveCapture(nullptr);
}

HWND Win32Windows::Capture() const {
    return ToHandle(win::GetCapture());
}

void Win32Windows::Raise(HWND window) {
    const win::HWND handle = ToSystem(window);
    win::SetWindowPos(handle, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    if (IsTop(handle) && !NeverActive(handle)) win::SetForegroundWindow(handle);
}

// A window of its own moves with its frame.
void Win32Windows::Move(HWND window, const RECT& rect) {
    const win::HWND handle = ToSystem(window);
    const auto own = OwnWindow::Of(handle);
    if (own && own->IsChild()) return own->SetPlace(rect);
    RECT device;
    if (IsTop(handle)) {
        const Monitor monitor = Screens::At(rect.TopLeft());
        const POINT corner = monitor.ToDevice(rect.TopLeft());
        const POINT end = monitor.ToDevice({rect.right, rect.bottom});
        device = {corner.x, corner.y, end.x, end.y};
    } else {
        device = PixelGrid(Screens::RatioOf(handle), {0, 0}).ToDevice(rect);
    }
    win::SetWindowPos(handle, nullptr, device.left, device.top, std::max(device.Width(), 0),
                      std::max(device.Height(), 0), SWP_NOZORDER | SWP_NOACTIVATE);
}

RECT Win32Windows::Bounds(HWND window) const {
    return BoundsOf(ToSystem(window));
}

RECT Win32Windows::ScreenBounds(HWND window) const {
    RECT bounds = BoundsOf(ToSystem(window));
    const win::HWND handle = ToSystem(window);
    if (!IsTop(handle)) bounds.OffsetRect(ClientOriginOf(win::GetAncestor(handle, GA_PARENT)));
    return bounds;
}

SIZE Win32Windows::ClientSize(HWND window) const {
    return ClientSizeOf(ToSystem(window));
}

POINT Win32Windows::ClientOrigin(HWND window) const {
    return ClientOriginOf(ToSystem(window));
}

PixelGrid Win32Windows::Grid(HWND window) const {
    return GridOf(ToSystem(window));
}

void Win32Windows::Present(HWND window, const RECT& client, bool atOnce) {
    const win::HWND handle = ToSystem(window);
    const win::RECT part = ToSystem(GridOf(handle).ToDevice(client));
    win::InvalidateRect(handle, &part, 0);
    if (atOnce && !PlainWindow::IsAnyPainting()) win::UpdateWindow(handle);
}

void Win32Windows::SetScrollBar(HWND window, int bar, const ScrollBarLook& look) {
    if (const auto plain = PlainWindow::Of(ToSystem(window))) plain->SetScrollBar(bar, look);
}

int Win32Windows::ScrollTrackPosition(HWND window, int bar) const {
    const auto plain = PlainWindow::Of(ToSystem(window));
    return plain ? plain->ScrollTrackPosition(bar) : 0;
}

void Win32Windows::AcceptDrops(HWND window, bool accept) {
    if (const auto plain = PlainWindow::Of(ToSystem(window))) plain->AcceptDrops(accept);
}

namespace {

win::WINBOOL CALLBACK LookForMain(win::HWND window, win::LPARAM found) {
    const auto style = static_cast<DWORD>(win::GetWindowLongW(window, GWL_STYLE));
    const bool main = (style & WS_CAPTION) == WS_CAPTION && win::IsWindowVisible(window) &&
                      !win::GetWindow(window, GW_OWNER) && !OwnWindow::Of(window);
    if (main) *reinterpret_cast<win::HWND*>(found) = window;
    return !main;
}

}  // namespace

// The one that was named, else the thread's first window on the desktop that nobody owns.
HWND Win32Windows::MainWindow() const {
    if (win::IsWindow(mainWindow_)) return ToHandle(mainWindow_);
    win::HWND first = nullptr;
    win::EnumThreadWindows(win::GetCurrentThreadId(), LookForMain,
                           reinterpret_cast<win::LPARAM>(&first));
    return ToHandle(first);
}

void Win32Windows::SetMainWindow(HWND window) {
    mainWindow_ = ToSystem(window);
}

}  // namespace kvx::win32
