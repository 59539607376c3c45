#include "viewer/Pane.h"

#include <algorithm>

#include "platform/base/SystemInfo.h"

namespace kvx::viewer {
namespace {

constexpr int kTitleHeight = 20;
constexpr int kCross = 4;  // half the width of the close button's cross

}  // namespace

const MessageMap& Pane::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        ON_WM_PAINT<&Pane::OnPaint>(),
        ON_WM_SIZE<&Pane::OnSize>(),
        ON_WM_LBUTTONDOWN<&Pane::OnLButtonDown>(),
        ON_MESSAGE<WM_SETFOCUS, &Pane::OnSetFocus>(),
    };
    static const MessageMap kMap{&CWnd::GetMessageMap(), kEntries};
    return kMap;
}

bool Pane::CreateIn(CWnd& parent, UINT id) {
    return Create(WS_CHILD, RECT{}, &parent, id) &&
           toolbar_.Create(WS_CHILD | WS_VISIBLE, RECT{}, this, 0);
}

void Pane::SetControl(HWND control) {
    control_ = control;
    LayOut();
}

void Pane::SetHidden(bool hidden) {
    hidden_ = hidden;
    ShowWindow(hidden ? SW_HIDE : SW_SHOWNOACTIVATE);
}

void Pane::ShowToolbar(bool show) {
    toolbarShown_ = show;
    toolbar_.ShowWindow(show ? SW_SHOWNOACTIVATE : SW_HIDE);
    LayOut();
}

void Pane::SetActive(bool active) {
    if (active == active_) return;
    active_ = active;
    Invalidate(false);
}

void Pane::FocusControl() {
    if (CWnd* const control = FromHandle(control_)) control->SetFocus();
}

LRESULT Pane::OnSetFocus(WPARAM, LPARAM) {
    FocusControl();
    return 0;
}

// Keys with a meaning go before those of the control, which knows some of them too.
bool Pane::PreTranslateMessage(UINT message, WPARAM wParam, LPARAM) {
    if (message != WM_KEYDOWN) return false;
    const auto command = CommandOf(keys, static_cast<UINT>(wParam));
    if (!command || !StateOf(*command).enabled) return false;
    onCommand(*command);
    return true;
}

RECT Pane::CloseBox() const {
    const int right = GetClientRect().right - 2;
    return {right - kTitleHeight + 4, 2, right, kTitleHeight - 2};
}

void Pane::OnPaint() {
    CPaintDC dc(this);
    RECT bar = GetClientRect();
    dc.FillSolidRect(bar, GetSysColor(COLOR_3DFACE));
    bar.bottom = kTitleHeight;
    dc.FillSolidRect(bar, GetSysColor(active_ ? COLOR_HIGHLIGHT : COLOR_3DSHADOW));
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(GetSysColor(COLOR_HIGHLIGHTTEXT));
    dc.TextOut(6, (kTitleHeight - dc.GetTextExtent(title_).cy) / 2, title_);
    const RECT box = CloseBox();
    const CPoint middle((box.left + box.right) / 2, (box.top + box.bottom) / 2);
    CPen pen(PS_SOLID, 1, GetSysColor(COLOR_HIGHLIGHTTEXT));
    CPen* const previous = dc.SelectObject(&pen);
    dc.MoveTo(middle.x - kCross, middle.y - kCross);
    dc.LineTo(middle.x + kCross + 1, middle.y + kCross + 1);
    dc.MoveTo(middle.x - kCross, middle.y + kCross);
    dc.LineTo(middle.x + kCross + 1, middle.y - kCross - 1);
    dc.SelectObject(previous);
}

void Pane::OnSize(UINT, int, int) {
    LayOut();
}

void Pane::LayOut() {
    const SIZE size = GetClientRect().Size();
    int top = kTitleHeight;
    if (toolbarShown_) {
        toolbar_.MoveWindow(0, top, size.cx, ToolStrip::kHeight);
        top += ToolStrip::kHeight;
    }
    CWnd* const control = FromHandle(control_);
    if (control) control->MoveWindow(0, top, size.cx, std::max(0, size.cy - top));
    Invalidate(false);
}

void Pane::OnLButtonDown(UINT, CPoint point) {
    if (CloseBox().PtInRect(point)) return onClose();
    FocusControl();
}

}  // namespace kvx::viewer
