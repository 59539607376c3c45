// Which stretch of the trace and which contexts are shown: layout, scrolling, the time scale.

#include <algorithm>
#include <cmath>
#include <limits>

#include "host/DebuggerFunctions.h"
#include "trace/TraceData.h"
#include "traceview/TraceView.h"

namespace {

constexpr int kBarEnd = 65535;
constexpr double kLineStepDivisor = 10.0;

// Scrolling decodes, and decoding shows a dialog whose messages must not scroll again.
bool g_scrolling = false;

}  // namespace

void COSTraceView::LayOutColumns() {
    columns_.Layout(charWidth_);
    SizeTo(clientWidth_, clientHeight_);
}

void COSTraceView::OnSize(UINT, int cx, int cy) {
    Default();
    if (kvx::host::IsDebuggerLoaded() && data_) SizeTo(cx, cy);
}

void COSTraceView::SizeTo(int cx, int cy) {
    clientWidth_ = cx;
    clientHeight_ = cy;
    if (lineHeight_ == 0) return;
    visibleLines_ = cy / lineHeight_ - 1;
    if (IsOpen()) {
        const int empty = visibleLines_ - (data_->contexts.GetCount() - firstLine_);
        if (empty > 0) ScrollLines(std::min(empty, firstLine_));
    }
    columns_.SetChartRight(cx);
    UpdateVerticalBar();
}

void COSTraceView::UpdateHorizontalBar() {
    SCROLLINFO info;
    info.fMask = SIF_RANGE | SIF_POS;
    if (!IsOpen()) {
        SetScrollInfo(SB_HORZ, info);
        return ShowScrollBar(SB_HORZ, false);
    }
    info.nMax = kBarEnd;
    const double position = (displayStart_ - traceStart_) * (kBarEnd + 1.0) / TraceSpan();
    info.nPos = static_cast<int>(std::min(position, double{kBarEnd}));
    SetScrollInfo(SB_HORZ, info);
    ShowScrollBar(SB_HORZ, true);
}

void COSTraceView::UpdateVerticalBar() {
    SCROLLINFO info;
    info.fMask = SIF_RANGE | SIF_POS;
    if (!IsOpen()) return SetScrollInfo(SB_VERT, info);
    const int count = data_->contexts.GetCount();
    const bool fits = visibleLines_ >= count;
    info.nMax = fits ? 100 : count - visibleLines_;
    info.nPos = firstLine_;
    SetScrollInfo(SB_VERT, info);
    ShowScrollBar(SB_VERT, true);
    EnableScrollBar(SB_VERT, fits ? ESB_DISABLE_BOTH : ESB_ENABLE_BOTH);
}

void COSTraceView::ReloadAfterDecoding() {
    data_->contexts.Load();
    data_->markers.Rebuild(this, true);
}

bool COSTraceView::DecodeUpTo(double time) {
    int advanced = 0;
    const int completed = data_->engine.AnalyzeUpTo(this, time, &advanced);
    if (advanced) ReloadAfterDecoding();
    return completed == 1;
}

double COSTraceView::ScrollBy(double delta) {
    const double previous = displayStart_;
    const double start = std::max(std::min(displayStart_ + delta, traceEnd_), traceStart_);
    const double end = start + TraceSpan() / scale_;
    if (DecodeUpTo(end)) {
        displayStart_ = start;
        displayEnd_ = end;
    } else {
        Invalidate(true);
    }
    return displayStart_ - previous;
}

int COSTraceView::ScrollLines(int n) {
    const int below = data_->contexts.GetCount() - firstLine_ - visibleLines_;
    n = n < 0 ? std::max(n, -std::max(below, 0)) : std::min(n, firstLine_);
    firstLine_ -= n;
    return n;
}

void COSTraceView::ShowRange(double start, double end, double gridTime) {
    displayStart_ = start;
    displayEnd_ = end;
    scale_ = TraceSpan() / (end - start);
    gridTime_ = gridTime;
    UpdateHorizontalBar();
    Invalidate(true);
}

HRESULT COSTraceView::SetDisplayRange(double start, double end) {
    if (!IsOpen()) return E_FAIL;
    if (!IsRange(start, end)) return E_INVALIDARG;
    if (!DecodeUpTo(end)) return E_FAIL;
    ShowRange(start, end, (end - start) / 5.0);
    // The end marker goes first: a start marker that passed the old one would change places with
    // it.
    data_->markers.MoveEndIntoDisplay(this, displayEnd_);
    PlaceMarkers();
    return S_OK;
}

HRESULT COSTraceView::GetPosition(kvx::host::OSTracePosition& position) const {
    if (!IsOpen()) return E_FAIL;
    const COSMarker& markers = data_->markers;
    position = {displayStart_,
                displayEnd_,
                gridTime_,
                markers.GetMarkerTime(kMarkerStart),
                markers.GetMarkerTime(kMarkerEnd),
                markers.GetMarkerTime(kMarkerIndicator)};
    return S_OK;
}

HRESULT COSTraceView::SetPosition(const kvx::host::OSTracePosition& position) {
    if (!IsOpen()) return E_FAIL;
    if (!IsRange(position.displayStart, position.displayEnd) || !(position.gridTime > 0)) {
        return E_INVALIDARG;
    }
    double last = position.displayEnd;
    for (const double time : {position.startMarker, position.endMarker, position.indicator}) {
        if (time == 0) continue;
        if (!(time >= traceStart_ && time <= traceEnd_)) return E_INVALIDARG;
        last = std::max(last, time);
    }
    if (!DecodeUpTo(last)) return E_FAIL;
    ShowRange(position.displayStart, position.displayEnd, position.gridTime);
    SetMarkers(position.startMarker, position.endMarker, position.indicator);
    return S_OK;
}

// Start and end change places when they pass each other: the one that goes away from the other
// moves first.
void COSTraceView::SetMarkers(double start, double end, double indicator) {
    const auto set = [this](int which, double time) {
        if (time != 0) data_->markers.SetMarkerAt(this, which, time);
    };
    const bool back = end < data_->markers.GetMarkerTime(kMarkerStart);
    if (back) set(kMarkerStart, start);
    set(kMarkerEnd, end);
    if (!back) set(kMarkerStart, start);
    set(kMarkerIndicator, indicator);
}

void COSTraceView::OnHScroll(UINT code, int position) {
    if (g_scrolling || !IsOpen()) return;
    g_scrolling = true;
    ScrollHorizontally(code, position);
    g_scrolling = false;
    Default();
}

void COSTraceView::ScrollHorizontally(UINT code, int position) {
    const double page = TraceSpan() / scale_;
    double distance = 0.0;
    switch (code) {
        case SB_LINELEFT:
            distance = -page / kLineStepDivisor;
            break;
        case SB_LINERIGHT:
            distance = page / kLineStepDivisor;
            break;
        case SB_PAGELEFT:
            distance = -page;
            break;
        case SB_PAGERIGHT:
            distance = page;
            break;
        case SB_THUMBPOSITION:
            distance = (position - GetScrollPos(SB_HORZ)) * TraceSpan() / kBarEnd;
            break;
        case SB_LEFT:
            distance = -TraceSpan();
            break;
        case SB_RIGHT:
            distance = TraceSpan();
            break;
        default:
            break;
    }
    if (distance == 0.0 || ScrollBy(distance) == 0.0) return;
    UpdateHorizontalBar();
    UpdateVerticalBar();
    Invalidate(true);
}

void COSTraceView::OnVScroll(UINT code, int position) {
    if (!IsOpen()) return;
    ScrollVertically(code, position);
    Default();
}

void COSTraceView::ScrollVertically(UINT code, int position) {
    const int page = lineHeight_ > 0 ? clientHeight_ / lineHeight_ : 0;
    const int count = data_->contexts.GetCount();
    int n = 0;
    switch (code) {
        case SB_LINEUP:
            n = 1;
            break;
        case SB_LINEDOWN:
            n = -1;
            break;
        case SB_PAGEUP:
            n = page;
            break;
        case SB_PAGEDOWN:
            n = -page;
            break;
        case SB_THUMBTRACK:
            n = GetScrollPos(SB_VERT) - position;
            break;
        case SB_TOP:
            n = count;
            break;
        case SB_BOTTOM:
            n = -count;
            break;
        default:
            break;
    }
    if (n == 0 || ScrollLines(n) == 0) return;
    UpdateVerticalBar();
    Invalidate(true);
}

// The time at the anchor keeps its place, unless the display would begin before the trace. A wider
// display needs its records decoded; when the user stops that, everything stays as it was.
void COSTraceView::ZoomTo(double scale, double anchor) {
    scale = std::max(1.0, std::min(scale, std::numeric_limits<double>::max()));
    const double moved = anchor - (anchor - displayStart_) * (scale_ / scale);
    const double start = std::max(std::min(moved, traceEnd_), traceStart_);
    const double end = start + TraceSpan() / scale;
    if (DecodeUpTo(end)) {
        scale_ = scale;
        displayStart_ = start;
        displayEnd_ = end;
    }
    UpdateHorizontalBar();
    UpdateVerticalBar();
    Invalidate(true);
}

void COSTraceView::OnExpand() {
    if (Service() && IsOpen()) ZoomTo(scale_ * expandRate_, displayStart_);
}

void COSTraceView::OnReduce() {
    if (Service() && IsOpen()) ZoomTo(scale_ / reduceRate_, displayStart_);
}

void COSTraceView::OnUpdateReduce(CCmdUI& ui) {
    ui.Enable(IsOpen() && scale_ != 1.0);
}
