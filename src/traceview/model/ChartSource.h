#pragma once
// The two ways of finding what a paint of the chart draws of the trace.

#include "traceview/model/ChartItems.h"

class IQOSTraceService;

namespace kvx {

namespace host {
struct OSTraceColumns;
}

// Walks the events that can be visible, by the service's plain operations, and gives what each of
// them draws in the order of the walk. That is what the chart is; the other way gives its picture.
void WalkChart(IQOSTraceService& service, const ChartGeometry& geometry, const COSTrace& engine,
               const CContextMng& contexts, ChartItems& items);

// Looks for the events at the boundaries of pixels only, and leaves out what is painted over. The
// walk draws each dispatch's switch line and then its RUN bar; here all switch lines come first,
// which is the same picture, for the only RUN bar that covers a column belongs to that column's
// last dispatch.
void SearchChart(const host::OSTraceColumns& columns, const ChartGeometry& geometry,
                 const COSTrace& engine, const CContextMng& contexts, ChartItems& items);

}  // namespace kvx
