#include "platform/win32/Controls.h"

#include <algorithm>

#include "platform/os/windows/Wide.h"
#include "platform/win32/CheckList.h"
#include "platform/win32/Convert.h"

namespace kvx::win32 {

namespace {

constexpr int kNoLimit = 32767;

WindowKind KindOf(HWND control) {
    const auto own = OwnWindow::Of(ToSystem(control));
    return own ? own->Kind() : WindowKind::Plain;
}

bool IsCombo(HWND control) {
    return KindOf(control) == WindowKind::ComboBox;
}
bool IsList(HWND control) {
    return KindOf(control) == WindowKind::ListBox;
}
bool IsEdit(HWND control) {
    return KindOf(control) == WindowKind::Edit || KindOf(control) == WindowKind::TextEdit;
}

// Numbers in parameters keep their signs.
int Ask(HWND control, UINT message, int wParam = 0, int lParam = 0) {
    return static_cast<int>(win::SendMessageW(
        ToSystem(control), message, static_cast<win::WPARAM>(win::INT_PTR{wParam}), lParam));
}

// The message that means the same for either kind of list; -1 for what is no list.
int AskList(HWND list, UINT comboMessage, UINT listMessage, int wParam = 0) {
    if (IsCombo(list)) return Ask(list, comboMessage, wParam);
    return IsList(list) ? Ask(list, listMessage, wParam) : -1;
}

bool HasMany(HWND list) {
    const auto style = win::GetWindowLongW(ToSystem(list), GWL_STYLE);
    return (style & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) != 0;
}

// The other buttons of a radio button's group.
void UncheckOthers(win::HWND button) {
    const win::HWND parent = win::GetAncestor(button, GA_PARENT);
    for (win::HWND other = win::GetNextDlgGroupItem(parent, button, 0); other && other != button;
         other = win::GetNextDlgGroupItem(parent, other, 0))
        if (KindOf(ToHandle(other)) == WindowKind::RadioButton)
            win::SendMessageW(other, BM_SETCHECK, BST_UNCHECKED, 0);
}

}  // namespace

void Win32Controls::SetCheck(HWND button, bool checked) {
    if (checked && KindOf(button) == WindowKind::RadioButton) UncheckOthers(ToSystem(button));
    Ask(button, BM_SETCHECK, checked);
}

bool Win32Controls::Check(HWND button) const {
    return Ask(button, BM_GETCHECK) == BST_CHECKED;
}

void Win32Controls::SetDefault(HWND button, bool isDefault) {
    if (KindOf(button) == WindowKind::PushButton)
        Ask(button, BM_SETSTYLE, isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON, 1);
}

void Win32Controls::Click(HWND button) {
    if (win::IsWindowEnabled(ToSystem(button))) Ask(button, BM_CLICK);
}

void Win32Controls::SetTextLimit(HWND edit, int characters) {
    if (IsEdit(edit)) Ask(edit, EM_SETLIMITTEXT, characters > 0 ? characters : kNoLimit);
}

void Win32Controls::SetSelection(HWND edit, int start, int end) {
    if (IsEdit(edit)) Ask(edit, EM_SETSEL, start, end);
}

void Win32Controls::Selection(HWND edit, int& start, int& end) const {
    if (!IsEdit(edit)) return;
    win::DWORD from = 0;
    win::DWORD to = 0;
    win::SendMessageW(ToSystem(edit), EM_GETSEL, reinterpret_cast<win::WPARAM>(&from),
                      reinterpret_cast<win::LPARAM>(&to));
    start = static_cast<int>(from);
    end = static_cast<int>(to);
}

void Win32Controls::SetReadOnly(HWND edit, bool readOnly) {
    if (IsEdit(edit)) Ask(edit, EM_SETREADONLY, readOnly);
}

int Win32Controls::AddItem(HWND list, const CString& text) {
    if (!IsCombo(list) && !IsList(list)) return -1;
    const std::wstring wide = os::Wide(text);
    return static_cast<int>(win::SendMessageW(ToSystem(list),
                                              IsCombo(list) ? CB_ADDSTRING : LB_ADDSTRING, 0,
                                              reinterpret_cast<win::LPARAM>(wide.c_str())));
}

void Win32Controls::RemoveItem(HWND list, int index) {
    AskList(list, CB_DELETESTRING, LB_DELETESTRING, index);
}

void Win32Controls::ClearItems(HWND list) {
    AskList(list, CB_RESETCONTENT, LB_RESETCONTENT);
}

int Win32Controls::ItemCount(HWND list) const {
    return std::max(AskList(list, CB_GETCOUNT, LB_GETCOUNT), 0);
}

CString Win32Controls::ItemText(HWND list, int index) const {
    const int length = AskList(list, CB_GETLBTEXTLEN, LB_GETTEXTLEN, index);
    if (length <= 0) return {};
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    win::SendMessageW(ToSystem(list), IsCombo(list) ? CB_GETLBTEXT : LB_GETTEXT,
                      static_cast<win::WPARAM>(index), reinterpret_cast<win::LPARAM>(text.data()));
    return os::Narrow(text);
}

int Win32Controls::CurrentItem(HWND list) const {
    return AskList(list, CB_GETCURSEL, LB_GETCURSEL);
}

void Win32Controls::SetCurrentItem(HWND list, int index) {
    if (IsCombo(list))
        Ask(list, CB_SETCURSEL, index);
    else if (IsList(list) && HasMany(list))
        Ask(list, LB_SETSEL, 1, index);
    else if (IsList(list))
        Ask(list, LB_SETCURSEL, index);
}

bool Win32Controls::ItemSelected(HWND list, int index) const {
    return IsList(list) && Ask(list, LB_GETSEL, index) > 0;
}

void Win32Controls::SelectItem(HWND list, int index, bool selected) {
    if (!IsList(list)) return;
    if (HasMany(list))
        Ask(list, LB_SETSEL, selected, index);
    else if (selected)
        Ask(list, LB_SETCURSEL, index);
    else if (Ask(list, LB_GETCURSEL) == index)
        Ask(list, LB_SETCURSEL, -1);
}

bool Win32Controls::ItemChecked(HWND list, int index) const {
    const auto checks = CheckList::Of(ToSystem(list));
    return checks && checks->IsChecked(index);
}

void Win32Controls::CheckItem(HWND list, int index, bool checked) {
    if (const auto checks = CheckList::Of(ToSystem(list))) checks->Check(index, checked);
}

void Win32Controls::SetProgress(HWND bar, int lower, int upper, int position) {
    if (KindOf(bar) != WindowKind::ProgressBar) return;
    Ask(bar, PBM_SETRANGE32, lower, std::max(upper, lower + 1));
    Ask(bar, PBM_SETPOS, position);
}

}  // namespace kvx::win32
