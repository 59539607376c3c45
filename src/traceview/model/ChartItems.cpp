#include "traceview/model/ChartItems.h"

#include "host/ModuleHost.h"
#include "trace/EventReader.h"
#include "traceview/model/ChartSource.h"

namespace kvx {

ChartItems BuildChart(const ChartGeometry& geometry, const COSTrace& engine,
                      const CContextMng& contexts, double gridTime, double anchor) {
    ChartItems items;
    if (geometry.right <= geometry.left) return items;
    items.grid = BuildGrid(geometry, gridTime, anchor);
    IQOSTraceService* const service = host::TraceService();
    if (!service) return items;
    host::OSTraceColumns columns;
    host::IQOSTraceColumns* const bulk = QueryColumns(*service);
    if (bulk && Succeeded(bulk->GetColumns(&columns)))
        SearchChart(columns, geometry, engine, contexts, items);
    else
        WalkChart(*service, geometry, engine, contexts, items);
    return items;
}

}  // namespace kvx
