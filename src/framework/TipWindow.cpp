#include "framework/TipWindow.h"

#include <algorithm>

#include "platform/base/SystemInfo.h"
#include "platform/drawing/ClientDC.h"

namespace {

constexpr int kOffsetX = 75;  // the tip begins so far left of the pointer …
constexpr int kOffsetY = 50;  // … and so far below it
constexpr int kTextMargin = 4;
constexpr int kFrameMargin = 6;

}  // namespace

CRect PlaceTip(CPoint view, CPoint pointer, SIZE size, const RECT& work) {
    int left = view.x + pointer.x - kOffsetX;
    int top = view.y + pointer.y + kOffsetY;
    const int right = left + size.cx;
    const int bottom = top + size.cy;
    if (left < work.left) left = work.left;
    if (right > work.right) left -= right - work.right;
    if (bottom > work.bottom) top -= size.cy + kOffsetY;
    return {left, top, left + size.cx, top + size.cy};
}

const MessageMap& CTipWindow::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {ON_WM_PAINT<&CTipWindow::OnPaint>()};
    static const MessageMap kMap{&CWnd::GetMessageMap(), kEntries};
    return kMap;
}

bool CTipWindow::CreateTip(CWnd& view) {
    return CreateEx(WS_EX_DLGMODALFRAME, "", WS_POPUP | WS_BORDER, RECT{}, view.GetSafeHwnd(), 0);
}

void CTipWindow::Show(CWnd& view, CFont* font, std::vector<CString> lines, COLORREF colour,
                      CPoint pointer) {
    lines_ = std::move(lines);
    font_ = font;
    colour_ = colour;
    CPoint screen = pointer;
    view.ClientToScreen(&screen);
    const CRect place =
        PlaceTip(view.GetWindowRect().TopLeft(), pointer, Measure(), GetWorkArea(screen));
    SetWindowPos(nullptr, place.left, place.top, place.Width(), place.Height(),
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW);
    Invalidate(false);
    UpdateWindow();
}

SIZE CTipWindow::Measure() {
    CClientDC dc(this);
    CFont* const previous = dc.SelectObject(font_);
    int width = 0;
    int height = 0;
    for (const CString& line : lines_) {
        const CSize extent = dc.GetTextExtent(line.empty() ? CString(" ") : line);
        width = std::max<int>(width, extent.cx);
        height += extent.cy;
    }
    dc.SelectObject(previous);
    pitch_ = height / static_cast<int>(lines_.size());
    return {width + kTextMargin + kFrameMargin, height + kTextMargin + kFrameMargin};
}

void CTipWindow::OnPaint() {
    CPaintDC dc(this);
    CFont* const previous = dc.SelectObject(font_);
    dc.FillSolidRect(GetClientRect(), colour_);
    dc.SetBkMode(TRANSPARENT);
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        dc.TextOut(0, static_cast<int>(i) * pitch_, lines_[i]);
    }
    dc.SelectObject(previous);
}
