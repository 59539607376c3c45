#include "traceview/model/ChartItems.h"

#include "trace/ContextMng.h"
#include "trace/EventReader.h"
#include "traceview/model/ChartSource.h"
#include "traceview/model/KeptItems.h"
#include "traceview/model/Marker.h"

namespace kvx {

namespace {

void AddTrace(IQOSTraceService& service, const ChartGeometry& geometry, const COSTrace& engine,
              const CContextMng& contexts, KeptItems& kept, ChartItems& items) {
    const auto columns = TakeColumns(service);
    if (!columns) return WalkChart(service, geometry, engine, contexts, items);
    const ChartItems& found = kept.Of(*columns, geometry, engine, contexts);
    items.insert(items.end(), found.begin(), found.end());
}

}  // namespace

ChartItems BuildChart(IQOSTraceService* service, const ChartGeometry& geometry,
                      const COSTrace& engine, const CContextMng& contexts, const COSMarker& markers,
                      double gridTime, KeptItems& kept) {
    ChartItems items;
    if (geometry.right <= geometry.left) return items;
    const int rows = geometry.LastDrawnLine() - geometry.firstLine + 1;
    for (int row = 0; row < rows; ++row) items.emplace_back(RowLine{row});
    for (const GridLine& line : BuildGrid(geometry, gridTime, markers.GetMarkerTime(kMarkerStart)))
        items.emplace_back(line);
    if (service) AddTrace(*service, geometry, engine, contexts, kept, items);
    for (int row = 0; row < rows; ++row) {
        if (!contexts.IsShown(geometry.firstLine + row)) items.emplace_back(HiddenRow{row});
    }
    for (const int which : {kMarkerStart, kMarkerEnd, kMarkerIndicator}) {
        const double time = markers.GetMarkerTime(which);
        if (geometry.InDisplay(time)) items.emplace_back(MarkerLine{which, geometry.X(time)});
    }
    return items;
}

}  // namespace kvx
