// The index of export forms: one line each.

#include <algorithm>
#include <array>

#include "workbench/exports/Exporter.h"

namespace kvx::exports {
namespace {

constexpr std::array<const Exporter*, 4> kExporters = {
    &kPerfetto,
    &kBtf,
    &kItron,
    &kCsv,
};

}  // namespace

std::span<const Exporter* const> Exporters() {
    return kExporters;
}

const Exporter* FindExporter(std::string_view name) {
    const auto at = std::ranges::find(kExporters, name, &Exporter::name);
    return at == kExporters.end() ? nullptr : *at;
}

ExportRequest WholeOf(const service::DecodedRecording& decoded) {
    ExportRequest request{
        decoded, {}, decoded.GetRecording().FirstTime(), decoded.GetRecording().LastTime(),
        false,   {}};
    for (const auto& timeline : decoded.Timelines()) {
        request.timelines.push_back(timeline.get());
        // An event may be earlier than the first record's time only by damage.
        if (timeline->events.Count() > 0)
            request.start = std::min(request.start, timeline->events.Time(0));
    }
    return request;
}

}  // namespace kvx::exports
