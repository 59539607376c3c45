// Search in the system-call history. Condition and matching are the trace service's.

#include "host/CommandIds.h"
#include "trace/TraceData.h"
#include "traceview/TraceView.h"
#include "utils/ErrorMessage.h"

void COSTraceView::OnUpdateSearchAgain(CCmdUI& ui) {
    ui.Enable(IsOpen() && data_->markers.GetSearchFlag());
}

// Without a sender, so that this view is told as well and brings the hit into sight.
void COSTraceView::MoveIndicatorTo(std::uint32_t event) {
    data_->markers.SetMarker(nullptr, kMarkerIndicator, event);
}

std::optional<std::uint32_t> COSTraceView::SearchUndecoded() {
    int found = 0;
    std::uint32_t event = 0;
    if (data_->engine.AnalyzeRestAndSearch(this, &found, &event)) {
        ReloadAfterDecoding();
        UpdateVerticalBar();
        Invalidate(true);
    }
    if (found) return event;
    ShowErrorMessage(kvx::ids::kStringNotFound);
    return std::nullopt;
}

void COSTraceView::OnSearch() {
    IQOSTraceService* const service = Service();
    if (!service || !IsOpen()) return;
    std::uint32_t found = 0;
    VARIANT_BOOL more = VARIANT_FALSE;
    VARIANT_BOOL hit = VARIANT_FALSE;
    const std::uint32_t from = data_->markers.GetMarkerEvent(kMarkerIndicator);
    if (Failed(service->SearchFirst(from, &found, &more, &hit))) return;
    data_->markers.SetSearchFlag(1);
    if (hit == VARIANT_TRUE) return MoveIndicatorTo(found);
    if (more == VARIANT_FALSE) return ShowErrorMessage(kvx::ids::kStringNotFound);
    if (const auto event = SearchUndecoded()) MoveIndicatorTo(*event);
}

void COSTraceView::OnSearchNext() {
    IQOSTraceService* const service = Service();
    if (!service || !IsOpen()) return;
    std::uint32_t found = 0;
    const std::uint32_t from = data_->markers.GetMarkerEvent(kMarkerIndicator);
    if (Succeeded(service->SearchNext(from, &found))) return MoveIndicatorTo(found);
    if (const auto event = SearchUndecoded()) MoveIndicatorTo(*event);
}

void COSTraceView::OnSearchPrevious() {
    IQOSTraceService* const service = Service();
    if (!service || !IsOpen()) return;
    std::uint32_t found = 0;
    const std::uint32_t from = data_->markers.GetMarkerEvent(kMarkerIndicator);
    if (Failed(service->SearchPrevious(from, &found))) {
        return ShowErrorMessage(kvx::ids::kStringNotFound);
    }
    MoveIndicatorTo(found);
}
