#include "traceview/model/KeptItems.h"

#include <utility>

#include "trace/ContextMng.h"
#include "traceview/model/ChartSource.h"

namespace kvx {

const ChartItems& KeptItems::Of(const host::OSTraceColumns& columns, const ChartGeometry& geometry,
                                const COSTrace& engine, const CContextMng& contexts) {
    Seen now{geometry, columns.time, columns.eventCount, columns.knownEvents, {}, {}};
    now.lineOfContext.assign(columns.lineOfContext, columns.lineOfContext + columns.contextCount);
    for (int line = 0; line < contexts.GetCount(); ++line)
        now.hatched.push_back(contexts.IsHatched(line) != 0);
    if (now == found_.of) return found_.items;
    found_ = {std::move(now), {}};
    SearchChart(columns, geometry, engine, contexts, found_.items);
    return found_.items;
}

}  // namespace kvx
