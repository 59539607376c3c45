#pragma once
// The two ways of finding what a paint of the chart draws.

#include "traceview/model/ChartItems.h"

class IQOSTraceService;

namespace kvx {

namespace host {
struct OSTraceColumns;
}

// Walks the events that can be visible, by the service's plain operations.
void WalkChart(IQOSTraceService& service, const ChartGeometry& geometry, const COSTrace& engine,
               const CContextMng& contexts, ChartItems& items);

// Looks for the events at the boundaries of pixels only.
void SearchChart(const host::OSTraceColumns& columns, const ChartGeometry& geometry,
                 const COSTrace& engine, const CContextMng& contexts, ChartItems& items);

}  // namespace kvx
