#include "platform/windows/WindowState.h"

#include <utility>

#include "platform/base/Guarded.h"
#include "platform/base/MessageDispatch.h"
#include "platform/base/Rects.h"
#include "platform/base/SystemInfo.h"
#include "platform/windows/View.h"
#include "platform/windows/WindowMap.h"

namespace kvx {

WindowFrame FrameOf(DWORD style, DWORD exStyle) {
    const bool caption = (style & WS_CAPTION) == WS_CAPTION;
    WindowFrame frame;
    if ((style & WS_BORDER) && !caption) frame.border = 1;
    if ((exStyle & WS_EX_DLGMODALFRAME) && !caption) frame.raised = 2;
    if (exStyle & WS_EX_CLIENTEDGE) frame.sunken = 2;
    return frame;
}

void EndCapture() {
    CWnd* const window = InstalledBackend() ? CWnd::GetCapture() : nullptr;
    if (window) window->SendMessage(WM_CANCELMODE);
}

WindowState* WindowState::Of(const CWnd* window) {
    return window ? window->state_.get() : nullptr;
}

LRESULT WindowState::Dispatch(CWnd& window, UINT message, WPARAM wParam, LPARAM lParam) {
    const MessageScope scope(window, message, wParam, lParam);
    const LRESULT failing = message == WM_CREATE ? -1 : 0;
    return Guarded(failing, [&] { return window.WindowProc(message, wParam, lParam); });
}

LRESULT WindowState::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_SIZE && !living_) return 0;
    if (message == WM_SIZE) Invalidate({0, 0, ParamX(lParam), ParamY(lParam)}, true);
    const HWND handle = Handle();
    if (IsTakenBefore(message, wParam, lParam)) return 0;
    const LRESULT result = Dispatch(*owner_, message, wParam, lParam);
    if (message == WM_SYSCOLORCHANGE && Of(FindWindow(handle)) == this) {
        surface_ = std::make_shared<Surface>();
        owner_->Invalidate();
    }
    return result;
}

bool WindowState::IsTakenBefore(UINT message, WPARAM wParam, LPARAM lParam) {
    static bool keyTaken = false;
    const bool key = message == WM_KEYDOWN;
    if (message == WM_CHAR) return keyTaken;
    if (!key && message != WM_LBUTTONDOWN && message != WM_LBUTTONUP && message != WM_RBUTTONDOWN)
        return false;
    HWND next = Handle();
    bool taken = false;
    while (next && !taken) {
        CWnd* const window = FindWindow(next);
        const bool child = !window || (window->GetStyle() & WS_CHILD);
        next = child ? Backend().Windows().Parent(next) : nullptr;
        taken = window && Guarded(false, [&] {
                    return window->PreTranslateMessage(message, wParam, lParam);
                });
    }
    if (key) keyTaken = taken;
    return taken;
}

// Contexts that are open keep the old surface; what they draw is invalid anyway.
std::shared_ptr<Surface> WindowState::CurrentSurface() {
    const SIZE size = Backend().Windows().ClientSize(Handle());
    const PixelGrid grid = Backend().Windows().Grid(Handle());
    const bool sameGrid = grid == surface_->Grid();
    if (sameGrid && size == surface_->Size()) return surface_;
    const int index = owner_->BackgroundColour();
    const COLORREF fill = GetSysColor(index < 0 ? COLOR_3DFACE : index);
    auto next = sameGrid ? std::make_shared<Surface>(*surface_)
                         : std::make_shared<Surface>(SIZE{}, fill, grid);
    next->Resize(size, fill);
    surface_ = next;
    if (!sameGrid) Invalidate({0, 0, size.cx, size.cy}, true);
    return next;
}

std::shared_ptr<const Surface> WindowState::Picture() {
    const HWND handle = Handle();
    std::shared_ptr<const Surface> last = CurrentSurface();
    PaintInvalid();
    return Of(FindWindow(handle)) == this ? CurrentSurface() : last;
}

void WindowState::Invalidate(const RECT& rect, bool erase) {
    const SIZE size = Backend().Windows().ClientSize(Handle());
    const RECT part = Intersection(rect, {0, 0, size.cx, size.cy});
    if (part.IsRectEmpty()) return;
    invalid_ = Union(invalid_, part);
    erase_ = erase_ || erase;
    Backend().Windows().Present(Handle(), part, false);
}

void WindowState::Validate(const RECT* rect) {
    const RECT whole = Intersection(invalid_, rect ? *rect : invalid_);
    if (whole == invalid_) TakeInvalid();
}

WindowState::InvalidPart WindowState::TakeInvalid() {
    taken_ = true;
    return {std::exchange(invalid_, RECT{}), std::exchange(erase_, false)};
}

void WindowState::PaintInvalid() {
    if (painting_ || invalid_.IsRectEmpty()) return;
    const HWND handle = Handle();
    painting_ = true;
    taken_ = false;
    OnMessage(WM_PAINT, 0, 0);
    if (Of(FindWindow(handle)) != this) return;
    painting_ = false;
    if (!taken_) TakeInvalid();
}

DROPEFFECT WindowState::OnDrag(const COleDataObject& data, DWORD keyState, POINT client,
                               bool entered) {
    if (entered) viewTakesDrag_ = false;
    if (dropView_) {
        COleDataObject object = data;
        const DROPEFFECT effect = Guarded(DROPEFFECT_NONE, [&] {
            return entered ? dropView_->OnDragEnter(&object, keyState, client)
                           : dropView_->OnDragOver(&object, keyState, client);
        });
        viewTakesDrag_ = effect != DROPEFFECT_NONE;
        if (viewTakesDrag_) return effect;
    }
    return TakesFiles(data) ? DROPEFFECT_COPY : DROPEFFECT_NONE;
}

void WindowState::OnDragLeave() {
    if (dropView_) Guarded([&] { dropView_->OnDragLeave(); });
}

DROPEFFECT WindowState::OnDrop(const COleDataObject& data, DROPEFFECT effect, POINT client) {
    if (dropView_ && viewTakesDrag_) {
        COleDataObject object = data;
        const bool dropped =
            Guarded(false, [&] { return dropView_->OnDrop(&object, effect, client); });
        return dropped ? effect : DROPEFFECT_NONE;
    }
    if (!TakesFiles(data)) return DROPEFFECT_NONE;
    OnMessage(WM_DROPFILES, reinterpret_cast<WPARAM>(CreateDrop(data.Files())), 0);
    return DROPEFFECT_COPY;
}

void WindowState::NotifyDestroy() {
    if (std::exchange(destroyed_, true)) return;
    OnMessage(WM_DESTROY, 0, 0);
}

void WindowState::OnWindowGone() {
    NotifyDestroy();
    OnMessage(WM_NCDESTROY, 0, 0);
    CWnd* const owner = owner_;
    RemoveWindow(owner->m_hWnd);
    owner->m_hWnd = nullptr;
    const auto self = std::move(owner->state_);  // until this function ends
    Guarded([owner] { owner->PostNcDestroy(); });
}

void WindowState::ShowBar(int bar) {
    Backend().Windows().SetScrollBar(Handle(), bar, Bar(bar).Look());
}

void WindowState::SetFrame() {
    Backend().Windows().SetFrame(Handle(), FrameOf(style, exStyle));
}

void WindowState::SetDropView(CView* view) {
    dropView_ = view;
    Backend().Windows().AcceptDrops(Handle(), acceptFiles_ || dropView_);
}

void WindowState::AcceptFiles(bool accept) {
    acceptFiles_ = accept;
    Backend().Windows().AcceptDrops(Handle(), acceptFiles_ || dropView_);
}

}  // namespace kvx
