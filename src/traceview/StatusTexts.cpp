#include "traceview/StatusTexts.h"

#include "host/CommandIds.h"
#include "host/OSTraceService.h"
#include "platform/Resources.h"
#include "platform/Text.h"
#include "trace/OSTrace.h"
#include "traceview/model/Marker.h"

namespace kvx {
namespace {

constexpr double kLargestPlainScale = 1000000.0;

CString TimeText(const COSTrace& engine, double time) {
    CString text;
    engine.FormatTime(time, text);
    return text;
}

CString ScaleText(double scale) {
    return scale < kLargestPlainScale ? FormatText("%f", scale) : FormatText("%e", scale);
}

const char* AreaText(int condition) {
    if (condition == kRangeFull) return "Full";
    return condition == kRangeFree ? "Free" : "";
}

}  // namespace

std::vector<CString> ComposeStatusTexts(COSTrace& engine, const COSMarker& markers, double scale,
                                        double gridTime) {
    const double start = markers.GetMarkerTime(kMarkerStart);
    const double end = markers.GetMarkerTime(kMarkerEnd);
    CString mark = LoadString(ids::kStringStatusMark);
    for (const double time : {start, end, end - start}) {
        mark = FormatResource(mark, TimeText(engine, time));
    }
    return {mark,
            FormatResource(LoadString(ids::kStringStatusIndicator),
                           TimeText(engine, markers.GetMarkerTime(kMarkerIndicator))),
            FormatResource(LoadString(ids::kStringStatusScale), ScaleText(scale)),
            FormatResource(LoadString(ids::kStringStatusGrid), TimeText(engine, gridTime)),
            FormatResource(LoadString(ids::kStringStatusArea), AreaText(engine.GetStatus()))};
}

}  // namespace kvx
