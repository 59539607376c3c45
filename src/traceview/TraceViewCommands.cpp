// Commands on markers and lines.

#include "trace/DisplayChanged.h"
#include "trace/TraceData.h"
#include "traceview/TraceView.h"

void COSTraceView::OnUpdateTraceOpen(CCmdUI& ui) {
    ui.Enable(IsOpen());
}

void COSTraceView::OnStartMarker() {
    if (!IsOpen()) return;
    data_->markers.MoveStartIntoDisplay(this, displayStart_);
    Invalidate(true);
}

void COSTraceView::OnUpdateStartMarker(CCmdUI& ui) {
    ui.Enable(IsOpen() && data_->markers.GetMarkerTime(kMarkerEnd) >= displayStart_);
}

void COSTraceView::OnEndMarker() {
    if (!IsOpen()) return;
    data_->markers.MoveEndIntoDisplay(this, displayEnd_);
    Invalidate(true);
}

void COSTraceView::OnUpdateEndMarker(CCmdUI& ui) {
    ui.Enable(IsOpen() && data_->markers.GetMarkerTime(kMarkerStart) <= displayEnd_);
}

void COSTraceView::OnIndicator() {
    if (!IsOpen()) return;
    data_->markers.MoveIndicatorIntoDisplay(this, displayStart_, displayEnd_);
    Invalidate(true);
}

void COSTraceView::OnAdjust() {
    if (!IsOpen()) return;
    displayStart_ = data_->markers.GetMarkerTime(kMarkerStart);
    displayEnd_ = data_->markers.GetMarkerTime(kMarkerEnd);
    if (displayStart_ != displayEnd_) scale_ = TraceSpan() / (displayEnd_ - displayStart_);
    UpdateHorizontalBar();
    Invalidate(true);
}

void COSTraceView::OnUpdateAdjust(CCmdUI& ui) {
    ui.Enable(IsOpen() && data_->markers.GetMarkerTime(kMarkerStart) !=
                              data_->markers.GetMarkerTime(kMarkerEnd));
}

void COSTraceView::ReloadLines(bool keepSort) {
    data_->contexts.Load();
    data_->markers.Rebuild(this, keepSort);
}

void COSTraceView::OnDefaultOrder() {
    IQOSTraceService* const service = Service();
    if (!service || !IsOpen()) return;
    service->ResetContextOrder();
    ReloadLines(false);
    Invalidate(true);
    kvx::BroadcastDisplayChanged(this);
}

void COSTraceView::OnUpdateDefaultOrder(CCmdUI& ui) {
    IQOSTraceService* const service = Service();
    std::int32_t mode = 0;
    ui.Enable(service && Succeeded(service->GetTimeMode(&mode)) && IsOpen());
}

void COSTraceView::OnShowLine() {
    ShowSelectedLines(true);
}
void COSTraceView::OnHideLine() {
    ShowSelectedLines(false);
}

void COSTraceView::OnUpdateSelectedLines(CCmdUI& ui) {
    ui.Enable(Service() && !selection_.IsEmpty());
}

void COSTraceView::ShowSelectedLines(bool show) {
    IQOSTraceService* const service = Service();
    if (!service) return;
    const auto selected = selection_.Lines(data_->contexts);
    VARIANT lines;
    lines.vt = VT_ARRAY | VT_UINT;
    lines.parray = SafeArrayCreateVector(static_cast<std::uint32_t>(selected.size()));
    for (std::uint32_t i = 0; i < selected.size(); ++i) {
        VARIANT* const element = SafeArrayElement(lines.parray, i);
        element->vt = VT_UINT;
        element->uintVal = selected[i];
    }
    show ? service->ShowContext(lines) : service->HideContext(lines);
    data_->contexts.Load();
    selection_.Clear();
    RedrawWindow();
    VariantClear(&lines);
}
