#include "workbench/cli/MarkedRange.h"

namespace kvx::cli {

void DecodeAll(COSTraceData& data, IViewSender& view) {
    double first = 0.0;
    double end = 0.0;
    double analysed = 0.0;
    int advanced = 0;
    if (!data.engine.Open(&view)) return;
    data.engine.GetTimes(&first, &end, &analysed);
    data.engine.AnalyzeUpTo(&view, end + 1.0, &advanced);
    data.contexts.Load();
}

std::string MarkRange(COSTraceData& data, service::TraceService& service,
                      std::optional<std::int64_t> start, std::optional<std::int64_t> end) {
    std::uint32_t count = 0;
    service.GetEventCount(&count);
    if (count == 0) return {};
    std::int64_t from = 0;
    service.GetEventTime(0, &from);
    from = start.value_or(from);
    const std::int64_t to = end.value_or(service.GetRecording()->LastTime());
    if (from > to) return "the range starts after its end";
    // Without an end the range goes on behind the last event, to the end of the recording.
    if (!end) data.markers.EndRangeAt(static_cast<double>(to));
    data.markers.MoveStartIntoDisplay(nullptr, static_cast<double>(from));
    data.markers.MoveEndIntoDisplay(nullptr, static_cast<double>(to));
    const auto first = static_cast<std::int64_t>(data.markers.GetMarkerTime(kMarkerStart));
    const auto last = static_cast<std::int64_t>(data.markers.GetMarkerTime(kMarkerEnd));
    return from <= first && first <= last && last <= to ? "" : kNoEventInRange;
}

}  // namespace kvx::cli
