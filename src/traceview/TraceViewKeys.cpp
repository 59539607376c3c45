// Keys and wheel: what the table of key bindings says.

#include "host/CommandIds.h"
#include "platform/Keys.h"
#include "traceview/KeySheet.h"
#include "traceview/TraceView.h"
#include "traceview/model/KeyBindings.h"

using kvx::KeyAction;

void COSTraceView::OnKeyDown(UINT key, UINT, UINT) {
    const bool control = GetKeyState(VK_CONTROL) < 0;
    const bool shift = GetKeyState(VK_SHIFT) < 0;
    if (const auto action = kvx::FindKeyAction(key, control, shift)) Perform(*action);
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
        case KeyAction::kSearch:
            return command(kvx::ids::kSearch);
        case KeyAction::kSearchNext:
            return command(kvx::ids::kSearchNext);
        case KeyAction::kSearchPrevious:
            return command(kvx::ids::kSearchPrevious);
        case KeyAction::kCancelDrag:
            return gesture_.Cancel();
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
    if (!IsOpen() || gesture_.IsOn()) return true;
    CPoint point = screen;
    ScreenToClient(&point);
    const ChartGeometry geometry = Geometry();
    const double anchor = geometry.InChart(point.x) ? geometry.TimeAt(point.x) : displayStart_;
    ZoomTo(delta >= 0 ? scale_ * expandRate_ : scale_ / reduceRate_, anchor);
    return true;
}
