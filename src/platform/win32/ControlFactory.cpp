#include "platform/win32/ControlFactory.h"

#include "platform/win32/CheckList.h"
#include "platform/win32/Convert.h"
#include "platform/win32/Geometry.h"
#include "platform/win32/NativeControl.h"

namespace kvx::win32 {

namespace {

struct ControlForm {
    const wchar_t* name;
    DWORD style = 0;
    DWORD exStyle = 0;
};

ControlForm ListForm(DWORD asked) {
    DWORD style = LBS_NOTIFY | LBS_NOINTEGRALHEIGHT;
    style |= asked & (LBS_SORT | LBS_MULTIPLESEL | LBS_EXTENDEDSEL);
    if (asked & ::LBS_CHECKBOXES) style |= LBS_OWNERDRAWFIXED | LBS_HASSTRINGS;
    return {L"LISTBOX", style | WS_VSCROLL, WS_EX_CLIENTEDGE};
}

ControlForm FormOf(WindowKind kind, DWORD asked) {
    switch (kind) {
        case WindowKind::CheckBox:
            return {L"BUTTON", BS_AUTOCHECKBOX};
        case WindowKind::RadioButton:
            return {L"BUTTON", BS_AUTORADIOBUTTON};
        case WindowKind::Edit:
            return {L"EDIT", ES_AUTOHSCROLL | (asked & (ES_READONLY | ES_NUMBER)),
                    WS_EX_CLIENTEDGE};
        case WindowKind::TextEdit:
            return {
                L"EDIT",
                ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN | WS_VSCROLL | (asked & ES_READONLY),
                WS_EX_CLIENTEDGE};
        case WindowKind::ComboBox:
            return {L"COMBOBOX", CBS_AUTOHSCROLL | WS_VSCROLL | (asked & CBS_DROPDOWNLIST)};
        case WindowKind::ListBox:
            return ListForm(asked);
        case WindowKind::ProgressBar:
            return {L"msctls_progress32"};
        default:
            return {L"BUTTON", BS_PUSHBUTTON};
    }
}

}  // namespace

win::HWND MakeControl(const WindowRequest& request, IWindowSink* sink) {
    const ControlForm form = FormOf(request.kind, request.style);
    const DWORD style =
        WS_CHILD | WS_CLIPSIBLINGS | form.style | (request.style & (WS_TABSTOP | WS_GROUP));
    const win::HWND parent = ToSystem(request.parent);
    const RECT rect = GridOf(parent).ToDevice(request.rect);
    const win::HWND window = win::CreateWindowExW(
        form.exStyle, form.name, ToLines(request.text).c_str(), style, rect.left, rect.top,
        std::max(rect.Width(), 0), std::max(rect.Height(), 0), parent,
        reinterpret_cast<win::HMENU>(std::uintptr_t{request.id}), nullptr, nullptr);
    if (!window) return nullptr;
    const bool checks =
        request.kind == WindowKind::ListBox && (request.style & ::LBS_CHECKBOXES) != 0;
    NativeControl::TakeOver(window, checks ? std::make_shared<CheckList>(request, sink)
                                           : std::make_shared<NativeControl>(request, sink));
    return window;
}

}  // namespace kvx::win32
