// The system's messages as ours: mouse, keys, focus, commands of controls.

#include <utility>

#include "platform/win32/CheckList.h"
#include "platform/win32/Convert.h"
#include "platform/win32/Geometry.h"
#include "platform/win32/Keys.h"
#include "platform/win32/PlainWindow.h"

namespace kvx::win32 {

namespace {

constexpr LRESULT kProcessed = 0;
constexpr int kNotch = 120;
constexpr LPARAM kRepeated = LPARAM{1} << 30;

bool g_movingCapture = false;

bool IsNotification(const OwnWindow& control, UINT code) {
    switch (control.Kind()) {
        case WindowKind::PushButton:
        case WindowKind::CheckBox:
        case WindowKind::RadioButton:
            return code == BN_CLICKED;
        case WindowKind::Edit:
        case WindowKind::TextEdit:
            return code == EN_CHANGE;
        case WindowKind::ComboBox:
            return code == CBN_SELCHANGE || code == CBN_EDITCHANGE;
        case WindowKind::ListBox:
            return code == LBN_SELCHANGE || code == LBN_DBLCLK || code == CLBN_CHKCHANGE;
        default:
            return true;
    }
}

// The system tells of the choice before the field shows it.
void ShowChoice(win::HWND combo) {
    const auto index = win::SendMessageW(combo, CB_GETCURSEL, 0, 0);
    const auto length =
        win::SendMessageW(combo, CB_GETLBTEXTLEN, static_cast<win::WPARAM>(index), 0);
    if (index < 0 || length < 0) return;
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    win::SendMessageW(combo, CB_GETLBTEXT, static_cast<win::WPARAM>(index),
                      reinterpret_cast<win::LPARAM>(text.data()));
    win::SetWindowTextW(combo, text.c_str());
}

}  // namespace

void PlainWindow::MoveCapture(win::HWND window) {
    g_movingCapture = true;
    if (window)
        win::SetCapture(window);
    else
        win::ReleaseCapture();
    g_movingCapture = false;
}

win::LRESULT PlainWindow::OnSystemMessage(UINT message, win::WPARAM wParam, win::LPARAM lParam) {
    if (const auto result = OnInput(message, wParam, lParam)) return *result;
    switch (message) {
        case WM_NCCALCSIZE:
            return OnCalcSize(wParam, lParam);
        case WM_GETMINMAXINFO:
            if (living_) OnMinMax(reinterpret_cast<win::MINMAXINFO*>(lParam));
            return 0;
        case WM_WINDOWPOSCHANGED:
            OnMoved();
            return 0;
        case WM_PAINT:
            OnPaint();
            return 0;
        case WM_ERASEBKGND:
            return 1;
        case WM_DRAWITEM: {
            const auto& item = *reinterpret_cast<const win::DRAWITEMSTRUCT*>(lParam);
            if (const auto list = CheckList::Of(item.hwndItem)) list->Draw(item);
            return 1;
        }
        case WM_CLOSE:
            Send(WM_CLOSE);
            return 0;
        case WM_DPICHANGED: {
            const RECT r = ToRect(*reinterpret_cast<const win::RECT*>(lParam));
            win::SetWindowPos(Handle(), nullptr, r.left, r.top, r.Width(), r.Height(),
                              SWP_NOZORDER | SWP_NOACTIVATE);
            PlaceChildren(Handle());
            return 0;
        }
        case WM_SYSCOLORCHANGE:
            Send(WM_SYSCOLORCHANGE);
            for (win::HWND child = win::GetWindow(Handle(), GW_CHILD); child;
                 child = win::GetWindow(child, GW_HWNDNEXT))
                win::SendMessageW(child, message, wParam, lParam);
            return 0;
        case WM_NCPAINT: {
            const win::LRESULT result = win::DefWindowProcW(Handle(), message, wParam, lParam);
            OnFramePaint();
            return result;
        }
        case WM_SHOWWINDOW:
            if (!wParam && win::GetCapture() == Handle()) ReleaseCapture();
            break;
        default:
            break;
    }
    return win::DefWindowProcW(Handle(), message, wParam, lParam);
}

std::optional<win::LRESULT> PlainWindow::OnInput(UINT message, win::WPARAM wParam,
                                                 win::LPARAM lParam) {
    if (const auto result = OnMouse(message, wParam, lParam)) return result;
    if (const auto result = OnKey(message, wParam, lParam)) return result;
    switch (message) {
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            Send(message);
            return 0;
        case WM_CANCELMODE:
            Send(WM_CANCELMODE);
            return 0;
        case WM_ACTIVATE:
            if (IsChild()) return std::nullopt;
            OnActivate(LOWORD(wParam) != WA_INACTIVE);
            return 0;
        case WM_COMMAND:
            return OnCommand(wParam, lParam);
        case WM_HSCROLL:
        case WM_VSCROLL:
            if (!lParam) return std::nullopt;
            SendScroll(message == WM_VSCROLL ? SB_VERT : SB_HORZ, wParam);
            return 0;
        default:
            return std::nullopt;
    }
}

// A control's number may be wider than what the system hands on.
win::LRESULT PlainWindow::OnCommand(win::WPARAM wParam, win::LPARAM lParam) {
    const auto control = reinterpret_cast<win::HWND>(lParam);
    const auto own = OwnWindow::Of(control);
    const UINT code = HIWORD(wParam);
    if (own && !IsNotification(*own, code)) return 0;
    if (own && own->Kind() == WindowKind::ComboBox && code == CBN_SELCHANGE) ShowChoice(control);
    return static_cast<win::LRESULT>(
        Send(WM_COMMAND, MakeCommand(own ? own->Id() : LOWORD(wParam), control ? code : 0),
             static_cast<LPARAM>(lParam)));
}

POINT PlainWindow::ToLogical(POINT device) const {
    const RECT pixel = {device.x, device.y, device.x + 1, device.y + 1};
    return GridOf(Handle()).ToLogical(pixel).TopLeft();
}

std::optional<win::LRESULT> PlainWindow::OnMouse(UINT message, win::WPARAM wParam,
                                                 win::LPARAM lParam) {
    const auto point = [&] {
        const POINT at = ToLogical(PackedPoint(lParam));
        return MakePointParam(at.x, at.y);
    };
    const auto screen = [&] {
        const POINT at = PackedPoint(lParam);
        return Screens::ToLogical(win::POINT{at.x, at.y});
    };
    switch (message) {
        case WM_NCHITTEST:
            if (TakesMouse()) return std::nullopt;
            return HTTRANSPARENT;
        case WM_SETCURSOR:
            if (LOWORD(static_cast<std::uintptr_t>(lParam)) != HTCLIENT ||
                reinterpret_cast<win::HWND>(wParam) != Handle())
                return std::nullopt;
            Send(WM_SETCURSOR);
            return 1;
        case WM_MOUSEMOVE:
            if (!std::exchange(mouseInside_, true)) {
                win::TRACKMOUSEEVENT track = {sizeof track, TME_LEAVE, Handle(), 0};
                win::TrackMouseEvent(&track);
            }
            Send(message, MouseFlagsOf(wParam), point());
            return 0;
        case WM_MOUSELEAVE:
            mouseInside_ = false;
            Send(message);
            return 0;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONUP:
        case WM_LBUTTONDBLCLK:
        case WM_RBUTTONDOWN:
        case WM_RBUTTONDBLCLK:
        case WM_MBUTTONDOWN:
        case WM_MBUTTONUP:
            Send(message, MouseFlagsOf(wParam), point());
            return 0;
        case WM_RBUTTONUP:
            Send(message, MouseFlagsOf(wParam), point());
            return std::nullopt;  // what the system does next is ask for the context menu
        case WM_MOUSEWHEEL:
        case WM_MOUSEHWHEEL: {
            int& rest = wheelRest_[message == WM_MOUSEWHEEL];
            rest += static_cast<std::int16_t>(HIWORD(wParam));
            SendNotches(rest, message, wParam, screen());
            return 0;
        }
        case WM_CONTEXTMENU: {
            POINT at = screen();
            if (PackedPoint(lParam) == POINT{-1, -1}) {  // by a key
                const SIZE size = ClientSizeOf(Handle());
                at = ClientOriginOf(Handle()) + POINT{size.cx / 2, size.cy / 2};
            }
            if (Send(message, 0, MakePointParam(at.x, at.y)) == kProcessed) return 0;
            return std::nullopt;
        }
        case WM_CAPTURECHANGED:
            if (!g_movingCapture) Send(WM_CANCELMODE);
            return 0;
        case WM_MOUSEACTIVATE:
            if (!(win::GetWindowLongW(Handle(), GWL_EXSTYLE) & WS_EX_NOACTIVATE))
                return std::nullopt;
            return MA_NOACTIVATE;
        default:
            return std::nullopt;
    }
}

// One message a notch: high-resolution wheels and touch pads send many small turns.
void PlainWindow::SendNotches(int& rest, UINT message, win::WPARAM wParam, POINT screen) {
    const int notches = rest / kNotch;
    if (notches == 0) return;
    rest -= notches * kNotch;
    Send(message, MakeWheel(MouseFlagsOf(LOWORD(wParam)), notches * kNotch),
         MakePointParam(screen.x, screen.y));
}

// Keys that nobody here wants go on to the window above.
std::optional<win::LRESULT> PlainWindow::OnKey(UINT message, win::WPARAM wParam,
                                               win::LPARAM lParam) {
    switch (message) {
        case WM_GETDLGCODE:
            return static_cast<win::LRESULT>(Send(WM_GETDLGCODE));
        case WM_KEYDOWN:
            if (wParam == VK_TAB && win::GetFocus() == Handle() && MoveFocusByTab(Handle()))
                return 0;
            [[fallthrough]];
        case WM_SYSKEYDOWN:
            if (SendKey(WM_KEYDOWN, VirtualKeyOf(wParam, lParam), lParam)) return 0;
            break;
        case WM_KEYUP:
        case WM_SYSKEYUP:
            if (SendKey(WM_KEYUP, VirtualKeyOf(wParam, lParam), lParam)) return 0;
            break;
        case WM_CHAR:
            SendCharacter(static_cast<wchar_t>(wParam), lParam);
            return 0;
        default:
            return std::nullopt;
    }
    const bool system = message == WM_SYSKEYDOWN || message == WM_SYSKEYUP;
    if (system || !IsChild()) return std::nullopt;
    return win::SendMessageW(win::GetAncestor(Handle(), GA_PARENT), message, wParam, lParam);
}

bool PlainWindow::SendKey(UINT message, UINT key, win::LPARAM flags) {
    return key != 0 && Send(message, key, static_cast<LPARAM>(flags) & kRepeated) == kProcessed;
}

// Characters beyond the first plane arrive in two parts.
void PlainWindow::SendCharacter(wchar_t unit, win::LPARAM flags) {
    if (unit >= 0xD800 && unit < 0xDC00) {
        highSurrogate_ = unit;
        return;
    }
    WPARAM character = unit;
    const wchar_t high = std::exchange(highSurrogate_, wchar_t{0});
    if (unit >= 0xDC00 && unit < 0xE000) {
        if (!high) return;
        character = 0x10000u + ((high - 0xD800u) << 10) + (unit - 0xDC00u);
    }
    Send(WM_CHAR, character, static_cast<LPARAM>(flags) & kRepeated);
}

// The keyboard comes back to where it was.
void PlainWindow::OnActivate(bool active) {
    const win::HWND focus = win::GetFocus();
    if (!active) {
        focus_ = focus && win::IsChild(Handle(), focus) ? focus : nullptr;
    } else if (!focus || !win::IsChild(Handle(), focus)) {
        const bool there = focus_ && win::IsChild(Handle(), focus_);
        win::SetFocus(there ? focus_ : Handle());
    }
}

}  // namespace kvx::win32
