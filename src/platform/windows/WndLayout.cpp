// Style, visibility, focus, capture, geometry and scroll bars of windows.

#include <utility>

#include "platform/Backend.h"
#include "platform/windows/WindowMap.h"
#include "platform/windows/WindowState.h"
#include "platform/windows/Wnd.h"

namespace {

kvx::IWindows& Windows() {
    return kvx::Backend().Windows();
}

constexpr DWORD kFrameStyles = WS_BORDER | WS_DLGFRAME;
constexpr DWORD kFrameExStyles = WS_EX_CLIENTEDGE | WS_EX_DLGMODALFRAME;

}  // namespace

DWORD CWnd::GetStyle() const {
    if (!m_hWnd) return 0;
    DWORD style = state_ ? state_->style : 0;
    const auto set = [&style](DWORD bit, bool on) { style = on ? style | bit : style & ~bit; };
    set(WS_VISIBLE, Windows().IsShown(m_hWnd));
    set(WS_DISABLED, !IsWindowEnabled());
    if (state_) {
        set(WS_HSCROLL, state_->Bar(SB_HORZ).Look().visible);
        set(WS_VSCROLL, state_->Bar(SB_VERT).Look().visible);
    } else {
        set(WS_CHILD, Windows().TopLevel(m_hWnd) != m_hWnd);
    }
    return style;
}

DWORD CWnd::GetExStyle() const {
    return state_ ? state_->exStyle : 0;
}

bool CWnd::ModifyStyle(DWORD remove, DWORD add) {
    if (!state_) return false;
    const DWORD before = GetStyle();
    const DWORD after = (before & ~remove) | add;
    state_->style = after;
    if ((before ^ after) & kFrameStyles) state_->SetFrame();
    if (!state_) return true;
    if ((before ^ after) & WS_VISIBLE) ShowWindow(after & WS_VISIBLE ? SW_SHOW : SW_HIDE);
    if ((before ^ after) & WS_DISABLED) EnableWindow(!(after & WS_DISABLED));
    return before != after;
}

bool CWnd::ModifyStyleEx(DWORD remove, DWORD add) {
    if (!state_) return false;
    const DWORD before = state_->exStyle;
    state_->exStyle = (before & ~remove) | add;
    const DWORD changed = before ^ state_->exStyle;
    if (changed & kFrameExStyles) state_->SetFrame();
    return changed != 0;
}

bool CWnd::ShowWindow(int command) {
    if (!m_hWnd) return false;
    const bool before = Windows().IsShown(m_hWnd);
    Windows().Show(m_hWnd, command != SW_HIDE, command != SW_SHOWNOACTIVATE);
    return before;
}

bool CWnd::IsWindowVisible() const {
    return m_hWnd && Windows().IsVisible(m_hWnd);
}

bool CWnd::EnableWindow(bool enable) {
    if (!m_hWnd) return false;
    const HWND handle = m_hWnd;
    const bool wasDisabled = !Windows().IsEnabled(handle);
    if (!enable && !wasDisabled) SendMessage(WM_CANCELMODE);
    if (!::IsWindow(handle)) return wasDisabled;
    Windows().Enable(handle, enable);
    ::SendMessage(handle, WM_ENABLE, enable, 0);
    return wasDisabled;
}

bool CWnd::IsWindowEnabled() const {
    return m_hWnd && Windows().IsEnabled(m_hWnd);
}

CWnd* CWnd::SetFocus() {
    if (!m_hWnd) return nullptr;
    const HWND before = Windows().Focus();
    Windows().SetFocus(m_hWnd);
    return FromHandle(before);
}

CWnd* CWnd::GetFocus() {
    return kvx::InstalledBackend() ? FromHandle(Windows().Focus()) : nullptr;
}

CWnd* CWnd::SetCapture() {
    if (!m_hWnd) return nullptr;
    const HWND before = Windows().Capture();
    if (before == m_hWnd) return this;
    Windows().SetCapture(m_hWnd);
    if (before) ::SendMessage(before, WM_CAPTURECHANGED, 0, reinterpret_cast<LPARAM>(m_hWnd));
    return FromHandle(before);
}

CWnd* CWnd::GetCapture() {
    return kvx::InstalledBackend() ? FromHandle(Windows().Capture()) : nullptr;
}

void ReleaseCapture() {
    if (!kvx::InstalledBackend()) return;
    const HWND before = Windows().Capture();
    if (!before) return;
    Windows().ReleaseCapture();
    SendMessage(before, WM_CAPTURECHANGED, 0, 0);
}

bool CWnd::SetForegroundWindow() {
    if (!m_hWnd) return false;
    Windows().Raise(Windows().TopLevel(m_hWnd));
    return true;
}

void CWnd::MoveWindow(int x, int y, int width, int height, bool) {
    if (m_hWnd) Windows().Move(m_hWnd, {x, y, x + width, y + height});
}

void CWnd::MoveWindow(const RECT& rect, bool repaint) {
    MoveWindow(rect.left, rect.top, rect.Width(), rect.Height(), repaint);
}

void CWnd::SetWindowPos(const CWnd*, int x, int y, int width, int height, UINT flags) {
    if (!m_hWnd) return;
    const HWND handle = m_hWnd;
    const RECT now = Windows().Bounds(handle);
    if (flags & SWP_NOMOVE) x = now.left, y = now.top;
    if (flags & SWP_NOSIZE) width = now.Width(), height = now.Height();
    Windows().Move(handle, {x, y, x + width, y + height});
    if (!::IsWindow(handle)) return;
    if (flags & (SWP_SHOWWINDOW | SWP_HIDEWINDOW))
        Windows().Show(handle, (flags & SWP_SHOWWINDOW) != 0, !(flags & SWP_NOACTIVATE));
    if (!(flags & SWP_NOZORDER)) Windows().Raise(handle);
}

CRect CWnd::GetClientRect() const {
    if (!m_hWnd) return {};
    const SIZE size = Windows().ClientSize(m_hWnd);
    return {0, 0, size.cx, size.cy};
}

void CWnd::GetClientRect(RECT* rect) const {
    *rect = GetClientRect();
}

CRect CWnd::GetWindowRect() const {
    return m_hWnd ? Windows().ScreenBounds(m_hWnd) : CRect{};
}

void CWnd::GetWindowRect(RECT* rect) const {
    *rect = GetWindowRect();
}

void CWnd::ClientToScreen(POINT* point) const {
    if (m_hWnd) *point = *point + Windows().ClientOrigin(m_hWnd);
}

void CWnd::ClientToScreen(RECT* rect) const {
    if (m_hWnd) rect->OffsetRect(Windows().ClientOrigin(m_hWnd));
}

void CWnd::ScreenToClient(POINT* point) const {
    if (m_hWnd) *point = *point - Windows().ClientOrigin(m_hWnd);
}

void CWnd::ScreenToClient(RECT* rect) const {
    if (m_hWnd) rect->OffsetRect(POINT{} - Windows().ClientOrigin(m_hWnd));
}

void CWnd::DragAcceptFiles(bool accept) {
    if (state_) state_->AcceptFiles(accept);
}

void CWnd::SetScrollInfo(int bar, const SCROLLINFO& info, bool) {
    if (!state_) return;
    state_->Bar(bar).Set(info);
    state_->ShowBar(bar);
}

void CWnd::GetScrollInfo(int bar, SCROLLINFO* info) const {
    if (!state_) return;
    *info = state_->Bar(bar).Info();
    info->nTrackPos = Windows().ScrollTrackPosition(m_hWnd, bar);
}

int CWnd::SetScrollPos(int bar, int position, bool redraw) {
    const int before = GetScrollPos(bar);
    SetScrollInfo(bar, {SIF_POS, 0, 0, 0, position, 0}, redraw);
    return before;
}

int CWnd::GetScrollPos(int bar) const {
    return state_ ? state_->Bar(bar).Info().nPos : 0;
}

void CWnd::SetScrollRange(int bar, int minimum, int maximum, bool redraw) {
    SetScrollInfo(bar, {SIF_RANGE, minimum, maximum, 0, 0, 0}, redraw);
}

void CWnd::GetScrollRange(int bar, int* minimum, int* maximum) const {
    if (!state_) return;
    *minimum = state_->Bar(bar).Info().nMin;
    *maximum = state_->Bar(bar).Info().nMax;
}

void CWnd::ShowScrollBar(int bar, bool show) {
    for (const int each : {SB_HORZ, SB_VERT}) {
        if (!state_ || (bar != SB_BOTH && bar != each)) continue;
        state_->Bar(each).Show(show);
        state_->ShowBar(each);
    }
}

void CWnd::EnableScrollBar(int bar, UINT arrows) {
    for (const int each : {SB_HORZ, SB_VERT}) {
        if (!state_ || (bar != SB_BOTH && bar != each)) continue;
        state_->Bar(each).Enable(arrows == ESB_ENABLE_BOTH);
        state_->ShowBar(each);
    }
}
