// Mouse, keys and wheel as the window gets them. What keys do says the table of key bindings.

#include "host/CommandIds.h"
#include "platform/base/Keys.h"
#include "traceview/KeySheet.h"
#include "traceview/TraceView.h"

using kvx::KeyAction;

void COSTraceView::OnMouseMove(UINT, CPoint point) {
    pointer_.Move(point);
    Default();
}

LRESULT COSTraceView::OnMouseLeave(WPARAM, LPARAM) {
    pointer_.Leave();
    return Default();
}

void COSTraceView::OnLButtonDown(UINT flags, CPoint point) {
    pointer_.Press(point);
    CCoreView::OnLButtonDown(flags, point);
}

void COSTraceView::OnLButtonUp(UINT, CPoint point) {
    pointer_.Release(point);
    Default();
}

void COSTraceView::OnCancelMode() {
    pointer_.Cancel();
    Default();
}

LRESULT COSTraceView::OnPainted(WPARAM, LPARAM) {
    pointer_.LookAgain();
    return 0;
}

void COSTraceView::OnKeyDown(UINT key, UINT, UINT) {
    const kvx::KeyModifiers modifiers = {GetKeyState(VK_CONTROL) < 0, GetKeyState(VK_SHIFT) < 0,
                                         GetKeyState(VK_MENU) < 0};
    if (const auto action = kvx::FindKeyAction(key, modifiers)) Perform(*action);
    Default();
}

void COSTraceView::OnChar(UINT character, UINT, UINT) {
    if (const auto action = kvx::FindCharacterAction(character)) Perform(*action);
    Default();
}

void COSTraceView::Perform(KeyAction action) {
    const auto scroll = [this](UINT message, UINT code) {
        SendMessage(message, MakeScroll(code, 0));
    };
    const auto command = [this](UINT id) {
        CCmdUI ui(id);
        if (OnUpdateCommand(id, ui) && ui.IsEnabled()) OnCommand(id);
    };
    const auto go = [this](auto way) {
        const auto display = IsOpen() ? (display_->viewport.*way)() : std::nullopt;
        if (display) GoTo(*display);
    };
    switch (action) {
        case KeyAction::kPageUp:
            return scroll(WM_VSCROLL, SB_PAGEUP);
        case KeyAction::kPageDown:
            return scroll(WM_VSCROLL, SB_PAGEDOWN);
        case KeyAction::kTop:
            return scroll(WM_VSCROLL, SB_TOP);
        case KeyAction::kBottom:
            return scroll(WM_VSCROLL, SB_BOTTOM);
        case KeyAction::kLineUp:
            return scroll(WM_VSCROLL, SB_LINEUP);
        case KeyAction::kLineDown:
            return scroll(WM_VSCROLL, SB_LINEDOWN);
        case KeyAction::kTimeLeft:
            return scroll(WM_HSCROLL, SB_LINELEFT);
        case KeyAction::kTimeRight:
            return scroll(WM_HSCROLL, SB_LINERIGHT);
        case KeyAction::kExpand:
            return command(kvx::ids::kExpand);
        case KeyAction::kReduce:
            return command(kvx::ids::kReduce);
        case KeyAction::kAdjust:
            return command(kvx::ids::kAdjust);
        case KeyAction::kDisplayBack:
            return go(&ChartViewport::Previous);
        case KeyAction::kDisplayForward:
            return go(&ChartViewport::Next);
        case KeyAction::kSearch:
            return command(kvx::ids::kSearch);
        case KeyAction::kSearchNext:
            return command(kvx::ids::kSearchNext);
        case KeyAction::kSearchPrevious:
            return command(kvx::ids::kSearchPrevious);
        case KeyAction::kCancelDrag:
            return pointer_.CancelGesture();
        case KeyAction::kKeySheet:
            CKeySheet(this).DoModal();
            return;
        case KeyAction::kWheelLines:
        case KeyAction::kWheelTime:
        case KeyAction::kWheelZoom:
            return;
    }
}

// With Ctrl the wheel expands and reduces about the time under the pointer.
bool COSTraceView::OnMouseWheel(UINT flags, short delta, CPoint screen) {
    if (!(flags & MK_CONTROL)) return CCoreView::OnMouseWheel(flags, delta, screen);
    if (!IsOpen()) return true;
    CPoint point = screen;
    ScreenToClient(&point);
    const ChartViewport& viewport = display_->viewport;
    const ChartGeometry geometry = viewport.Geometry();
    const double anchor =
        geometry.InChart(point.x) ? geometry.TimeAt(point.x) : viewport.DisplayStart();
    GoTo(delta >= 0 ? viewport.Expanded(anchor) : viewport.Reduced(anchor));
    return true;
}
