#include "trace/TraceData.h"

COSTraceData::COSTraceData(kvx::ITraceSource& from)
    : source(from),
      engine(from),
      runTime(from),
      sysCalls(from),
      rdyToRun(from),
      markers(from),
      contexts(from) {
    engine.SetShared({&contexts, analyses, &markers, &lock});
    markers.SetShared({analyses, &lock});
    for (kvx::SharedAnalysis* const analysis : analyses)
        analysis->SetShared({&markers, &contexts, &engine, &lock});
}
