#include "trace/TraceData.h"

COSTraceData::COSTraceData(kvx::ITraceSource& from)
    : source(from),
      engine(from),
      runTime(from),
      sysCalls(from),
      rdyToRun(from),
      markers(from),
      contexts(from) {
    engine.SetShared({&contexts, &runTime, &sysCalls, &rdyToRun, &markers, &lock});
    markers.SetShared({&engine, &contexts, &runTime, &sysCalls, &rdyToRun, &lock});
    runTime.SetShared(&markers, &contexts);
    rdyToRun.SetShared(&markers, &contexts);
    sysCalls.SetShared(&markers);
}
