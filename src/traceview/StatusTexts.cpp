#include "traceview/StatusTexts.h"

#include "host/CommandIds.h"
#include "host/OSTraceService.h"
#include "platform/base/Resources.h"
#include "platform/base/Text.h"
#include "trace/OSTrace.h"
#include "traceview/model/ChartViewport.h"
#include "traceview/model/MarkText.h"
#include "traceview/model/Marker.h"

namespace kvx {
namespace {

constexpr double kLargestPlainScale = 1000000.0;

CString ScaleText(double scale) {
    return scale < kLargestPlainScale ? FormatText("%f", scale) : FormatText("%e", scale);
}

const char* AreaText(int condition) {
    if (condition == kRangeFull) return "Full";
    return condition == kRangeFree ? "Free" : "";
}

}  // namespace

std::vector<CString> ComposeStatusTexts(COSTrace& engine, const COSMarker& markers,
                                        const ChartViewport& viewport) {
    return {MarkText(engine, markers),
            FormatResource(LoadString(ids::kStringStatusIndicator),
                           engine.TimeText(markers.GetMarkerTime(kMarkerIndicator))),
            FormatResource(LoadString(ids::kStringStatusScale), ScaleText(viewport.Scale())),
            FormatResource(LoadString(ids::kStringStatusGrid), engine.TimeText(viewport.gridTime)),
            FormatResource(LoadString(ids::kStringStatusArea), AreaText(engine.GetStatus()))};
}

}  // namespace kvx
