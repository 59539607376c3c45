// Search in the system-call history. Condition and matching are the trace service's.

#include "host/CommandIds.h"
#include "host/OSTraceService.h"
#include "traceview/TraceCommands.h"
#include "traceview/TraceView.h"
#include "utils/ErrorMessage.h"

bool TraceCommands::MaySearchAgain() const {
    return IsOpen() && Data().markers.GetSearchFlag();
}

// Without a sender, so that this view is told as well and brings the hit into sight.
void TraceCommands::MoveIndicatorTo(std::uint32_t event) {
    Data().markers.SetMarker(nullptr, kMarkerIndicator, event);
}

std::optional<std::uint32_t> TraceCommands::SearchUndecoded() {
    int found = 0;
    std::uint32_t event = 0;
    if (Data().engine.AnalyzeRestAndSearch(&view_, &found, &event)) {
        Display().ReloadAfterDecoding();
        view_.ShowDisplay();
    }
    if (found) return event;
    ShowErrorMessage(kvx::ids::kStringNotFound);
    return std::nullopt;
}

void TraceCommands::Search() {
    IQOSTraceService* const service = Service();
    if (!service || !IsOpen()) return;
    std::uint32_t found = 0;
    VARIANT_BOOL more = VARIANT_FALSE;
    VARIANT_BOOL hit = VARIANT_FALSE;
    const std::uint32_t from = Data().markers.GetMarkerEvent(kMarkerIndicator);
    if (Failed(service->SearchFirst(from, &found, &more, &hit))) return;
    Data().markers.SetSearchFlag(1);
    if (hit == VARIANT_TRUE) return MoveIndicatorTo(found);
    if (more == VARIANT_FALSE) return ShowErrorMessage(kvx::ids::kStringNotFound);
    if (const auto event = SearchUndecoded()) MoveIndicatorTo(*event);
}

void TraceCommands::SearchNext() {
    IQOSTraceService* const service = Service();
    if (!service || !IsOpen()) return;
    std::uint32_t found = 0;
    const std::uint32_t from = Data().markers.GetMarkerEvent(kMarkerIndicator);
    if (Succeeded(service->SearchNext(from, &found))) return MoveIndicatorTo(found);
    if (const auto event = SearchUndecoded()) MoveIndicatorTo(*event);
}

void TraceCommands::SearchPrevious() {
    IQOSTraceService* const service = Service();
    if (!service || !IsOpen()) return;
    std::uint32_t found = 0;
    const std::uint32_t from = Data().markers.GetMarkerEvent(kMarkerIndicator);
    if (Failed(service->SearchPrevious(from, &found))) {
        return ShowErrorMessage(kvx::ids::kStringNotFound);
    }
    MoveIndicatorTo(found);
}
