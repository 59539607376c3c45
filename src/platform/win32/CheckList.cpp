#include "platform/win32/CheckList.h"

#include "platform/win32/Convert.h"

namespace kvx::win32 {

namespace {

constexpr win::LPARAM kChecked = 1;

win::RECT BoxOf(const win::RECT& item) {
    win::RECT box = item;
    box.right = box.left + (item.bottom - item.top);
    return box;
}

}  // namespace

std::shared_ptr<CheckList> CheckList::Of(win::HWND window) {
    return std::dynamic_pointer_cast<CheckList>(OwnWindow::Of(window));
}

bool CheckList::IsChecked(int index) const {
    return Default(LB_GETITEMDATA, static_cast<win::WPARAM>(index), 0) == kChecked;
}

void CheckList::Check(int index, bool checked) {
    Default(LB_SETITEMDATA, static_cast<win::WPARAM>(index), checked ? kChecked : 0);
    win::InvalidateRect(Handle(), nullptr, 1);
}

void CheckList::Toggle(int index) {
    Check(index, !IsChecked(index));
    const HWND parent = ToHandle(win::GetAncestor(Handle(), GA_PARENT));
    ::SendMessage(parent, WM_COMMAND, MakeCommand(Id(), CLBN_CHKCHANGE),
                  reinterpret_cast<LPARAM>(Handle()));
}

int CheckList::BoxAt(win::LPARAM point) const {
    const POINT at = PackedPoint(point);
    const auto index = static_cast<int>(Default(LB_ITEMFROMPOINT, 0, point));
    win::RECT item = {};
    Default(LB_GETITEMRECT, static_cast<win::WPARAM>(index), reinterpret_cast<win::LPARAM>(&item));
    return ToRect(BoxOf(item)).PtInRect(at) ? index : -1;
}

win::LRESULT CheckList::OnSystemMessage(UINT message, win::WPARAM wParam, win::LPARAM lParam) {
    const auto count = Default(LB_GETCOUNT, 0, 0);
    if (message == WM_LBUTTONDOWN && count > 0 && BoxAt(lParam) >= 0) {
        const auto keep = Of(Handle());
        NativeControl::OnSystemMessage(message, wParam, lParam);
        if (Sink()) Toggle(BoxAt(lParam));
        return 0;
    }
    if (message == WM_KEYDOWN && wParam == VK_SPACE) {
        const auto current = static_cast<int>(Default(LB_GETCURSEL, 0, 0));
        if (current >= 0 && current < count) Toggle(current);
        return 0;
    }
    const win::LRESULT result = NativeControl::OnSystemMessage(message, wParam, lParam);
    if (message == WM_SETFONT) FitItems(reinterpret_cast<win::HFONT>(wParam));
    return result;
}

void CheckList::FitItems(win::HFONT font) const {
    const win::HDC dc = win::GetDC(Handle());
    win::TEXTMETRICW metrics = {};
    const win::HGDIOBJ before = win::SelectObject(dc, font);
    win::GetTextMetricsW(dc, &metrics);
    win::SelectObject(dc, before);
    win::ReleaseDC(Handle(), dc);
    Default(LB_SETITEMHEIGHT, 0, metrics.tmHeight + 2);
}

void CheckList::Draw(const win::DRAWITEMSTRUCT& item) const {
    const auto index = static_cast<int>(item.itemID);
    if (index < 0) return;
    const bool selected = (item.itemState & ODS_SELECTED) != 0;
    const auto colour = [](int of) { return win::GetSysColor(of); };
    win::RECT area = item.rcItem;
    win::FillRect(item.hDC, &area,
                  win::GetSysColorBrush(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    win::RECT box = BoxOf(area);
    win::DrawFrameControl(item.hDC, &box, DFC_BUTTON,
                          DFCS_BUTTONCHECK | UINT{IsChecked(index) ? DFCS_CHECKED : 0u});
    area.left = box.right + 2;
    std::wstring text(static_cast<std::size_t>(Default(LB_GETTEXTLEN, item.itemID, 0)), L'\0');
    Default(LB_GETTEXT, item.itemID, reinterpret_cast<win::LPARAM>(text.data()));
    win::SetBkMode(item.hDC, TRANSPARENT);
    win::SetTextColor(item.hDC, colour(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
    win::DrawTextW(item.hDC, text.c_str(), static_cast<int>(text.size()), &area,
                   DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    if (item.itemState & ODS_FOCUS) win::DrawFocusRect(item.hDC, &item.rcItem);
}

}  // namespace kvx::win32
