// Scrolling through time and lines.

#include "traceview/TraceView.h"
#include "utils/ScopedFlag.h"

namespace {

constexpr double kLineStepDivisor = 10.0;

// Scrolling decodes, and decoding shows a dialog whose messages must not scroll again.
bool g_scrolling = false;

}  // namespace

void COSTraceView::UpdateHorizontalBar() {
    SCROLLINFO info;
    info.fMask = SIF_RANGE | SIF_POS;
    if (IsOpen()) {
        info.nMax = ChartViewport::kBarEnd;
        info.nPos = display_->viewport.BarPosition();
    }
    SetScrollInfo(SB_HORZ, info);
    ShowScrollBar(SB_HORZ, IsOpen());
}

void COSTraceView::UpdateVerticalBar() {
    SCROLLINFO info;
    info.fMask = SIF_RANGE | SIF_POS;
    if (!IsOpen()) return SetScrollInfo(SB_VERT, info);
    const ChartViewport& viewport = display_->viewport;
    const int count = display_->data.contexts.GetCount();
    const bool fits = viewport.VisibleLines() >= count;
    info.nMax = fits ? 100 : count - viewport.VisibleLines();
    info.nPos = viewport.FirstLine();
    SetScrollInfo(SB_VERT, info);
    ShowScrollBar(SB_VERT, true);
    EnableScrollBar(SB_VERT, fits ? ESB_DISABLE_BOTH : ESB_ENABLE_BOTH);
}

void COSTraceView::ShowDisplay() {
    UpdateHorizontalBar();
    UpdateVerticalBar();
    Invalidate(true);
    pointer_.Follow();
}

void COSTraceView::GoTo(const ChartViewport::Display& display) {
    display_->GoTo(display);
    ShowDisplay();
}

double COSTraceView::ScrollBy(double delta) {
    const double moved = display_->ScrollBy(delta);
    Invalidate(true);
    return moved;
}

int COSTraceView::ScrollLines(int n) {
    return display_->viewport.ScrollLines(n);
}

double COSTraceView::DistanceOf(UINT code, int position) const {
    const ChartViewport& viewport = display_->viewport;
    switch (code) {
        case SB_LINELEFT:
            return -viewport.DisplaySpan() / kLineStepDivisor;
        case SB_LINERIGHT:
            return viewport.DisplaySpan() / kLineStepDivisor;
        case SB_PAGELEFT:
            return -viewport.DisplaySpan();
        case SB_PAGERIGHT:
            return viewport.DisplaySpan();
        case SB_THUMBPOSITION:
            return (position - GetScrollPos(SB_HORZ)) * viewport.TraceSpan() /
                   ChartViewport::kBarEnd;
        case SB_LEFT:
            return -viewport.TraceSpan();
        case SB_RIGHT:
            return viewport.TraceSpan();
        default:
            return 0.0;
    }
}

void COSTraceView::OnHScroll(UINT code, int position) {
    if (g_scrolling || !IsOpen()) return;
    const kvx::ScopedFlag guard(g_scrolling);
    const double distance = DistanceOf(code, position);
    if (distance != 0.0 && ScrollBy(distance) != 0.0) ShowDisplay();
    Default();
}

// Up is positive.
int COSTraceView::LinesOf(UINT code, int position) const {
    const int page = display_->viewport.PageOfLines();
    const int count = display_->data.contexts.GetCount();
    switch (code) {
        case SB_LINEUP:
            return 1;
        case SB_LINEDOWN:
            return -1;
        case SB_PAGEUP:
            return page;
        case SB_PAGEDOWN:
            return -page;
        case SB_THUMBTRACK:
            return GetScrollPos(SB_VERT) - position;
        case SB_TOP:
            return count;
        case SB_BOTTOM:
            return -count;
        default:
            return 0;
    }
}

void COSTraceView::OnVScroll(UINT code, int position) {
    if (!IsOpen()) return;
    if (const int n = LinesOf(code, position); n != 0 && ScrollLines(n) != 0) ShowDisplay();
    Default();
}
