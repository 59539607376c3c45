#include "traceview/LineDrag.h"

#include <algorithm>

#include "host/CommandIds.h"
#include "platform/windows/Wnd.h"

CLineDrag::CLineDrag(CWnd& view, TraceDisplay& display, CPoint point)
    : view_(view),
      display_(display),
      source_(display.viewport.Geometry().RowAt(point.y) + display.viewport.FirstLine()) {}

int CLineDrag::TargetLine(CPoint point) const {
    const ChartViewport& viewport = display_.viewport;
    const int row = viewport.Geometry().RowAt(point.y);
    return std::max(0, std::min(row, viewport.VisibleLines())) + viewport.FirstLine();
}

void CLineDrag::Move(CPoint point) {
    const int target = TargetLine(point);
    if (target != display_.viewport.dropLine && target >= 0) {
        display_.viewport.dropLine = target;
        view_.Invalidate(true);
    }
    const ChartGeometry geometry = display_.viewport.Geometry();
    if (point.x >= geometry.left) return;
    const auto scroll = [this](UINT code) { view_.SendMessage(WM_VSCROLL, MakeScroll(code, 0)); };
    if (point.y < geometry.lineHeight) scroll(SB_LINEUP);
    if (point.y >= geometry.clientHeight) scroll(SB_LINEDOWN);
}

void CLineDrag::Release(CPoint point) {
    Cancel();
    const int target = TargetLine(point);
    if (target != source_) {
        display_.MoveLine(source_, target);
    } else {
        ClickLine(target);
    }
}

void CLineDrag::ClickLine(int target) {
    const CContextMng& contexts = display_.data.contexts;
    if (target < contexts.GetCount()) display_.selection.Toggle(contexts.GetKey(target));
}

void CLineDrag::Cancel() {
    display_.viewport.dropLine = -1;
}

HCURSOR CLineDrag::Cursor() const {
    return LoadCursor(kvx::ids::kCursorLineDrag);
}
