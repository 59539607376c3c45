// What windows do with messages that nobody handles.

#include "platform/Backend.h"
#include "platform/base/SystemInfo.h"
#include "platform/windows/Cursor.h"
#include "platform/windows/DropTarget.h"
#include "platform/windows/WindowMap.h"
#include "platform/windows/WindowState.h"
#include "platform/windows/Wnd.h"

namespace {

constexpr LRESULT kNotProcessed = 1;

// Lets the parent have the message; 0 without one.
LRESULT AskParent(const CWnd& window, UINT message, WPARAM wParam, LPARAM lParam) {
    CWnd* const parent = window.GetParent();
    return parent ? parent->SendMessage(message, wParam, lParam) : 0;
}

// False as well when the window stands in one of the host's.
bool HasOwnParent(const CWnd& window) {
    const CWnd* const parent = window.GetParent();
    return parent && kvx::WindowState::Of(kvx::FindWindow(parent->m_hWnd));
}

LRESULT TurnHorizontalWheel(CWnd& window, WPARAM wheel, LPARAM point) {
    const kvx::WindowState* state = kvx::WindowState::Of(&window);
    if (!state || !(window.GetStyle() & WS_HSCROLL))
        return AskParent(window, WM_MOUSEHWHEEL, wheel, point);
    const bool right = ParamY(static_cast<LPARAM>(wheel)) > 0;
    window.SendMessage(WM_HSCROLL, MakeScroll(right ? SB_LINERIGHT : SB_LINELEFT, 0));
    return 1;
}

}  // namespace

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!state_) return 0;
    switch (message) {
        case WM_ERASEBKGND: {
            const int colour = BackgroundColour();
            if (colour < 0) return 0;
            reinterpret_cast<CDC*>(wParam)->FillSolidRect(GetClientRect(), GetSysColor(colour));
            return 1;
        }
        case WM_SETTEXT:
            kvx::Backend().Windows().SetText(m_hWnd, reinterpret_cast<const char*>(lParam));
            return 1;
        case WM_SETFONT:
            state_->font = reinterpret_cast<CFont*>(wParam);
            kvx::Backend().Windows().SetFont(
                m_hWnd, state_->font ? state_->font->Description() : DefaultGuiFont());
            if (lParam) Invalidate();
            return 0;
        case WM_CLOSE:
            DestroyWindow();
            return 0;
        case WM_CANCELMODE:
            if (GetCapture() == this) ReleaseCapture();
            return 0;
        case WM_SETCURSOR:
            if (!AskParent(*this, message, wParam, lParam))
                SetCursor(LoadStandardCursor(IDC_ARROW));
            return 0;
        case WM_MOUSEWHEEL:
            return AskParent(*this, message, wParam, lParam);
        case WM_CONTEXTMENU:
            return HasOwnParent(*this) ? AskParent(*this, message, wParam, lParam) : kNotProcessed;
        case WM_MOUSEHWHEEL:
            return TurnHorizontalWheel(*this, wParam, lParam);
        case WM_DROPFILES:
            DragFinish(reinterpret_cast<HDROP>(wParam));
            return 0;
        case WM_KEYDOWN:
        case WM_KEYUP:
        case WM_CHAR:
            return kNotProcessed;
        default:
            return 0;
    }
}
