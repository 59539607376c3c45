#include "traceview/model/TraceDisplay.h"

#include <algorithm>
#include <utility>

#include "host/OSTraceService.h"

namespace {

// The whole trace, but for the rounding of its span.
constexpr double kLeastScale = 1.0 - 1e-9;

}  // namespace

bool TraceDisplay::Open() {
    if (!data.engine.Open(&sender_)) return false;
    double start = 0.0;
    double end = 0.0;
    double analysed = 0.0;
    data.engine.GetTimes(&start, &end, &analysed);
    viewport.Open(start, end, analysed);
    LoadLines();
    PlaceMarkers();
    return true;
}

void TraceDisplay::Close(int resetService) {
    data.engine.Clear(&sender_, resetService);
    viewport.Close();
    viewport.SetLineCount(data.contexts.GetCount());
    selection.Clear();
    kept.Forget();
    rebuildDue_ = false;
}

void TraceDisplay::LoadLines() {
    data.contexts.Load();
    viewport.SetLineCount(data.contexts.GetCount());
}

void TraceDisplay::RebuildLines(bool keepSort) {
    LoadLines();
    data.markers.Rebuild(&sender_, keepSort);
}

void TraceDisplay::MoveLine(int source, int target) {
    IQOSTraceService* const service = data.source.Service();
    if (!service) return;
    if (source < target) --target;
    service->MoveContext(source, std::max(0, std::min(target, data.contexts.GetCount() - 1)));
    RebuildLines(true);
}

// Setting the start marker again would exchange it with an end marker that is dragged past it: what
// a drag ends is measured then.
void TraceDisplay::ReloadAfterDecoding() {
    LoadLines();
    rebuildDue_ = data.markers.IsDragging(kMarkerStart) || data.markers.IsDragging(kMarkerEnd);
    if (!rebuildDue_) data.markers.Rebuild(&sender_, true);
}

bool TraceDisplay::DecodeUpTo(double time) {
    int advanced = 0;
    const int completed = data.engine.AnalyzeUpTo(&sender_, time, &advanced);
    if (advanced) ReloadAfterDecoding();
    return completed == 1;
}

bool TraceDisplay::GoTo(const ChartViewport::Display& display) {
    if (!DecodeUpTo(display.end)) return false;
    viewport.Show(display);
    return true;
}

double TraceDisplay::ScrollBy(double delta) {
    const double previous = viewport.DisplayStart();
    GoTo(viewport.ScrolledBy(delta));
    return viewport.DisplayStart() - previous;
}

void TraceDisplay::CentreIndicator() {
    const double time = data.markers.GetMarkerTime(kMarkerIndicator);
    if (IsOpen() && !viewport.Geometry().InDisplay(time)) GoTo(viewport.CentredOn(time));
}

bool TraceDisplay::DragMarker(int which, int x) {
    const auto target = data.markers.DragTarget(which, x, viewport.Geometry());
    if (target) data.markers.SetMarker(&sender_, which, *target);
    return target.has_value();
}

void TraceDisplay::DropMarkers() {
    data.markers.Drop(&sender_);
    rebuildDue_ = false;
}

void TraceDisplay::CancelMarkerDrag(int which) {
    data.markers.CancelDrag(which);
    if (std::exchange(rebuildDue_, false)) data.markers.Rebuild(&sender_, true);
}

void TraceDisplay::PlaceMarkers() {
    data.markers.MoveStartIntoDisplay(&sender_, viewport.DisplayStart());
    data.markers.MoveEndIntoDisplay(&sender_, viewport.DisplayEnd());
    data.markers.MoveIndicatorIntoDisplay(&sender_, viewport.DisplayStart(), viewport.DisplayEnd());
}

bool TraceDisplay::IsInTrace(double time) const {
    return time >= viewport.TraceStart() && time <= viewport.TraceEnd();
}

std::optional<ChartViewport::Display> TraceDisplay::Within(double start, double end) const {
    if (!IsInTrace(start) || !IsInTrace(end)) return std::nullopt;
    return viewport.Between(start, end);
}

HRESULT TraceDisplay::SetDisplayRange(double start, double end) {
    if (!IsOpen()) return E_FAIL;
    const auto wanted = Within(start, end);
    if (!wanted) return E_INVALIDARG;
    if (!GoTo(*wanted)) return E_FAIL;
    viewport.gridTime = (end - start) / 5.0;
    // The end marker goes first: a start marker that passed the old one would change places with
    // it.
    data.markers.MoveEndIntoDisplay(&sender_, end);
    PlaceMarkers();
    return S_OK;
}

HRESULT TraceDisplay::GetPosition(kvx::host::OSTracePosition& position) const {
    if (!IsOpen()) return E_FAIL;
    position = {viewport.DisplayStart(),
                viewport.DisplayEnd(),
                viewport.gridTime,
                data.markers.GetMarkerTime(kMarkerStart),
                data.markers.GetMarkerTime(kMarkerEnd),
                data.markers.GetMarkerTime(kMarkerIndicator)};
    return S_OK;
}

// A display may reach beyond the end of the trace, as far as the user scrolled it.
HRESULT TraceDisplay::SetPosition(const kvx::host::OSTracePosition& position) {
    if (!IsOpen()) return E_FAIL;
    const auto wanted = viewport.Between(position.displayStart, position.displayEnd);
    const bool fits = wanted && IsInTrace(wanted->start) && wanted->scale > kLeastScale;
    if (!fits || !(position.gridTime > 0)) return E_INVALIDARG;
    double last = position.displayEnd;
    for (const double time : {position.startMarker, position.endMarker, position.indicator}) {
        if (time == 0) continue;
        if (!IsInTrace(time)) return E_INVALIDARG;
        last = std::max(last, time);
    }
    if (!DecodeUpTo(last)) return E_FAIL;
    viewport.Show(*wanted);
    viewport.gridTime = position.gridTime;
    SetMarkers(position.startMarker, position.endMarker, position.indicator);
    return S_OK;
}

// Start and end change places when they pass each other: the one that goes away from the other
// moves first.
void TraceDisplay::SetMarkers(double start, double end, double indicator) {
    const auto set = [this](int which, double time) {
        if (time != 0) data.markers.SetMarkerAt(&sender_, which, time);
    };
    const bool back = end < data.markers.GetMarkerTime(kMarkerStart);
    if (back) set(kMarkerStart, start);
    set(kMarkerEnd, end);
    if (!back) set(kMarkerStart, start);
    set(kMarkerIndicator, indicator);
}
