#include "framework/SizerBar.h"

#include <algorithm>

#include "platform/base/Keys.h"
#include "platform/base/SystemInfo.h"
#include "platform/drawing/ClientDC.h"
#include "platform/windows/Cursor.h"

const CRuntimeClass CSizerBar::kClass = MakeDynamicClass<CSizerBar>("CSizerBar", &CStatic::kClass);

const MessageMap& CSizerBar::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        ON_WM_SETCURSOR<&CSizerBar::OnSetCursor>(), ON_WM_LBUTTONDOWN<&CSizerBar::OnLButtonDown>(),
        ON_WM_MOUSEMOVE<&CSizerBar::OnMouseMove>(), ON_WM_LBUTTONUP<&CSizerBar::OnLButtonUp>(),
        ON_WM_CHAR<&CSizerBar::OnChar>(),           ON_WM_CANCELMODE<&CSizerBar::OnCancelMode>(),
    };
    static const MessageMap kMap{&CStatic::GetMessageMap(), kEntries};
    return kMap;
}

bool CSizerBar::Create(DWORD style, CWnd* parent, CWinMgr& manager, UINT id, const RECT& rect) {
    manager_ = &manager;
    return CStatic::Create("", style | SS_NOTIFY, rect, parent, id);
}

bool CSizerBar::IsHorizontal() {
    if (!IsWindow()) return false;
    if (horizontal_ == -1) {
        const CRect rect = GetWindowRect();
        horizontal_ = rect.Width() > rect.Height();
    }
    return horizontal_ == 1;
}

CPoint CSizerBar::Rectify(CPoint point) {
    return IsHorizontal() ? CPoint{0, point.y} : CPoint{point.x, 0};
}

CPoint CSizerBar::Constrain(CPoint point) const {
    return {std::max(limits_.left, std::min(point.x, limits_.right)),
            std::max(limits_.top, std::min(point.y, limits_.bottom))};
}

bool CSizerBar::OnSetCursor(CWnd*, UINT, UINT) {
    SetCursor(LoadStandardCursor(IsHorizontal() ? IDC_SIZENS : IDC_SIZEWE));
    return true;
}

void CSizerBar::OnLButtonDown(UINT, CPoint point) {
    dragging_ = true;
    start_ = previous_ = Rectify(point);
    bar_ = GetWindowRect();
    DrawBar();
    SetCapture();
    CWnd* const focus = GetFocus();
    focusBefore_ = focus ? focus->GetSafeHwnd() : nullptr;
    SetFocus();
    CPoint screen = point;
    ClientToScreen(&screen);
    SetLimits(screen);
}

// How far the bar's edges may go, in the parent's client coordinates.
RECT CSizerBar::LimitsOfBar() {
    WINRECT* const entry = manager_->FindRect(GetDlgCtrlID());
    WINRECT* const prev = entry->Prev();
    WINRECT* const next = entry->Next();
    SIZEINFO before;
    SIZEINFO after;
    manager_->OnGetSizeInfo(before, prev, GetParent());
    manager_->OnGetSizeInfo(after, next, GetParent());
    const RECT& p = prev->GetRect();
    const RECT& n = next->GetRect();
    return {std::max(p.left + before.minimum.cx, n.right - after.maximum.cx),
            std::max(p.top + before.minimum.cy, n.bottom - after.maximum.cy),
            std::min(p.left + before.maximum.cx, n.right - after.minimum.cx),
            std::min(p.top + before.maximum.cy, n.bottom - after.minimum.cy)};
}

// Limits of the edges become limits of the mouse by its place within the bar.
void CSizerBar::SetLimits(CPoint screen) {
    limits_ = LimitsOfBar();
    GetParent()->ClientToScreen(&limits_);
    ScreenToClient(&limits_);
    limits_.left += screen.x - bar_.left;
    limits_.top += screen.y - bar_.top;
    limits_.right -= bar_.right - screen.x;
    limits_.bottom -= bar_.bottom - screen.y;
}

void CSizerBar::OnMouseMove(UINT, CPoint point) {
    if (!dragging_) return static_cast<void>(Default());
    DrawBar();
    const CPoint to = Rectify(Constrain(point));
    bar_.OffsetRect(to - previous_);
    previous_ = to;
    DrawBar();
}

void CSizerBar::OnLButtonUp(UINT, CPoint point) {
    if (!dragging_) return static_cast<void>(Default());
    const CPoint delta = Rectify(Constrain(point)) - start_;
    CancelDrag();
    NotifyMoved(delta);
}

void CSizerBar::OnChar(UINT character, UINT, UINT) {
    if (dragging_ && character == VK_ESCAPE) return CancelDrag();
    Default();
}

void CSizerBar::OnCancelMode() {
    if (dragging_) CancelDrag();
    Default();
}

void CSizerBar::CancelDrag() {
    DrawBar();
    dragging_ = false;
    ReleaseCapture();
    if (::IsWindow(focusBefore_)) CWnd::FromHandle(focusBefore_)->SetFocus();
}

void CSizerBar::NotifyMoved(CPoint delta) {
    WINMGRNOTIFY record;
    record.id = GetDlgCtrlID();
    record.code = kWinMgrSizeBarMoved;
    record.moved = delta;
    GetParent()->SendMessage(kWinMgrMessage, record.id, reinterpret_cast<LPARAM>(&record));
}

void CSizerBar::DrawBar() {
    CWindowDC dc(GetParent());
    CRect rect = bar_;
    const CPoint origin = GetParent()->GetWindowRect().TopLeft();
    rect.OffsetRect({-origin.x, -origin.y});
    OnDrawBar(dc, rect);
}

void CSizerBar::OnDrawBar(CDC& dc, CRect& rect) {
    CBrush brush(GetSysColor(COLOR_BTNFACE));
    CBrush* const previous = dc.SelectObject(&brush);
    dc.PatBlt(rect.left, rect.top, rect.Width(), rect.Height(), PATINVERT);
    dc.SelectObject(previous);
}
