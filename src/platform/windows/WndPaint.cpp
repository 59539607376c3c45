// Invalidation, painting and the device contexts of windows.

#include "platform/Backend.h"
#include "platform/base/Rects.h"
#include "platform/drawing/WindowGraphics.h"
#include "platform/windows/WindowMap.h"
#include "platform/windows/WindowState.h"
#include "platform/windows/Wnd.h"

using kvx::WindowState;

namespace {

kvx::IWindows& Windows() {
    return kvx::Backend().Windows();
}

// The windows made here below the window, at their place in it.
void AddChildren(kvx::GraphicsGroup& group, HWND window, POINT origin) {
    for (const HWND child : Windows().Children(window)) {
        if (!Windows().IsVisible(child) || Windows().TopLevel(child) == child) continue;
        const CWnd* const own = kvx::FindWindow(child);
        if (own)
            group.Add(std::make_unique<kvx::WindowGraphics>(own),
                      origin - Windows().ClientOrigin(child));
        AddChildren(group, child, origin);
    }
}

}  // namespace

void CWnd::Invalidate(bool erase) {
    InvalidateRect(nullptr, erase);
}

void CWnd::InvalidateRect(const RECT* rect, bool erase) {
    if (!m_hWnd) return;
    const RECT part = rect ? *rect : GetClientRect();
    if (state_)
        state_->Invalidate(part, erase);
    else
        Windows().Present(m_hWnd, part, false);
}

void CWnd::ValidateRect(const RECT* rect) {
    if (state_) state_->Validate(rect);
}

void CWnd::UpdateWindow() {
    if (!state_ || state_->IsPainting() || !IsWindowVisible()) return;
    const HWND handle = m_hWnd;
    state_->PaintInvalid();
    if (kvx::FindWindow(handle) == this) Windows().Present(handle, GetClientRect(), true);
}

void CWnd::RedrawWindow(const RECT* rect, UINT flags) {
    if (flags & RDW_INVALIDATE) InvalidateRect(rect, (flags & RDW_ERASE) != 0);
    if (flags & RDW_UPDATENOW) UpdateWindow();
    if (!m_hWnd || !(flags & RDW_ALLCHILDREN)) return;
    for (const HWND child : Windows().Children(m_hWnd))
        if (CWnd* window = FromHandle(child)) window->RedrawWindow(nullptr, flags);
}

CClientDC::CClientDC(CWnd* window) : graphics_(std::make_unique<kvx::WindowGraphics>(window)) {
    Attach(graphics_.get(), {});
}

CClientDC::~CClientDC() = default;

CPaintDC::CPaintDC(CWnd* window) : graphics_(std::make_unique<kvx::WindowGraphics>(window)) {
    WindowState* const state = WindowState::Of(window);
    const auto invalid = state ? state->TakeInvalid() : WindowState::InvalidPart{};
    m_ps.rcPaint = invalid.rect;
    Attach(graphics_.get(), invalid.rect);
    if (!invalid.erase) return;
    m_ps.fErase = window->SendMessage(WM_ERASEBKGND, reinterpret_cast<WPARAM>(this)) == 0;
}

CPaintDC::~CPaintDC() = default;

CWindowDC::CWindowDC(CWnd* window) {
    auto group = std::make_unique<kvx::GraphicsGroup>();
    const HWND handle = window ? window->GetSafeHwnd() : nullptr;
    if (handle) {
        const POINT corner = window->GetWindowRect().TopLeft();
        group->Add(std::make_unique<kvx::WindowGraphics>(window),
                   corner - Windows().ClientOrigin(handle));
        AddChildren(*group, handle, corner);
    }
    graphics_ = std::move(group);
    Attach(graphics_.get(), {});
}

CWindowDC::~CWindowDC() = default;
