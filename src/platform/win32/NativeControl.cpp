#include "platform/win32/NativeControl.h"

#include "platform/win32/Keys.h"

namespace kvx::win32 {

namespace {

constexpr wchar_t kProcedure[] = L"KvxProcedure";

// The procedure that the window had.
win::LONG_PTR Replace(win::HWND window, win::WNDPROC procedure) {
    return win::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<win::LONG_PTR>(procedure));
}

}  // namespace

void NativeControl::TakeOver(win::HWND window, const std::shared_ptr<NativeControl>& control) {
    control->Attach(window, control);
    control->procedure_ = reinterpret_cast<win::WNDPROC>(Replace(window, &Procedure));
    if (control->Kind() != WindowKind::ComboBox) return;
    win::COMBOBOXINFO parts = {};
    parts.cbSize = sizeof parts;
    if (!win::GetComboBoxInfo(window, &parts) || !parts.hwndItem || parts.hwndItem == window)
        return;
    win::SetPropW(parts.hwndItem, kProcedure,
                  reinterpret_cast<win::HANDLE>(Replace(parts.hwndItem, &FieldProcedure)));
}

win::LRESULT CALLBACK NativeControl::FieldProcedure(win::HWND field, UINT message,
                                                    win::WPARAM wParam, win::LPARAM lParam) {
    const auto combo =
        std::dynamic_pointer_cast<NativeControl>(Of(win::GetAncestor(field, GA_PARENT)));
    if (combo)
        if (const auto result = combo->OnKeyboard(message, wParam, lParam)) return *result;
    const auto own = reinterpret_cast<win::WNDPROC>(win::GetPropW(field, kProcedure));
    if (message == WM_NCDESTROY) win::RemovePropW(field, kProcedure);
    return win::CallWindowProcW(own, field, message, wParam, lParam);
}

win::LRESULT NativeControl::Default(UINT message, win::WPARAM wParam, win::LPARAM lParam) const {
    return win::CallWindowProcW(procedure_, Handle(), message, wParam, lParam);
}

win::LRESULT NativeControl::OnSystemMessage(UINT message, win::WPARAM wParam, win::LPARAM lParam) {
    if (const auto result = OnKeyboard(message, wParam, lParam)) return *result;
    const win::LRESULT result = Default(message, wParam, lParam);
    if (message == WM_WINDOWPOSCHANGED) NotePlace();
    return result;
}

// The characters of keys that went elsewhere would only beep.
std::optional<win::LRESULT> NativeControl::OnKeyboard(UINT message, win::WPARAM wParam,
                                                      win::LPARAM lParam) {
    if (message == WM_KEYDOWN) return OnKey(wParam, lParam);
    if (message == WM_CHAR && (wParam == VK_TAB || LeavesKey(wParam))) return 0;
    return std::nullopt;
}

// Enter and Esc are for the dialog, unless they are of use here.
bool NativeControl::LeavesKey(win::WPARAM key) const {
    if (key != VK_RETURN && key != VK_ESCAPE) return false;
    if (Kind() == WindowKind::TextEdit && key == VK_RETURN) return false;
    return Kind() != WindowKind::ComboBox || !win::SendMessageW(Handle(), CB_GETDROPPEDSTATE, 0, 0);
}

std::optional<win::LRESULT> NativeControl::OnKey(win::WPARAM key, win::LPARAM flags) {
    if (key == VK_TAB && MoveFocusByTab(Handle())) return 0;
    const bool arrow = key >= VK_LEFT && key <= VK_DOWN;
    if (Kind() == WindowKind::RadioButton && arrow && MoveInGroup(key <= VK_UP)) return 0;
    const bool function = key >= VK_F1 && key <= VK_F12;
    if (!function && !LeavesKey(key)) return std::nullopt;
    return win::SendMessageW(win::GetAncestor(Handle(), GA_PARENT), WM_KEYDOWN, key, flags);
}

bool NativeControl::MoveInGroup(bool back) const {
    const win::HWND parent = win::GetAncestor(Handle(), GA_PARENT);
    const win::HWND next = win::GetNextDlgGroupItem(parent, Handle(), back);
    if (!next || next == Handle()) return false;
    win::SetFocus(next);
    win::SendMessageW(next, BM_CLICK, 0, 0);
    return true;
}

}  // namespace kvx::win32
