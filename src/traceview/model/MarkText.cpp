#include "traceview/model/MarkText.h"

#include "host/CommandIds.h"
#include "platform/base/Resources.h"
#include "platform/base/Text.h"
#include "trace/OSTrace.h"
#include "traceview/model/Marker.h"

namespace kvx {

CString MarkText(const COSTrace& engine, const COSMarker& markers) {
    const double start = markers.GetMarkerTime(kMarkerStart);
    const double end = markers.GetMarkerTime(kMarkerEnd);
    CString text = LoadString(ids::kStringStatusMark);
    for (const double time : {start, end, end - start}) {
        text = FormatResource(text, engine.TimeText(time));
    }
    return text;
}

}  // namespace kvx
