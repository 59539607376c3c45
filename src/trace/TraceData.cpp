#include "trace/TraceData.h"

COSTraceData::COSTraceData() {
    engine.SetShared({&contexts, &runTime, &sysCalls, &rdyToRun, &markers, &lock});
    markers.SetShared({&engine, &contexts, &runTime, &sysCalls, &rdyToRun, &lock});
    runTime.SetShared(&markers, &contexts);
    rdyToRun.SetShared(&markers, &contexts);
    sysCalls.SetShared(&markers);
}
