#pragma once
// Every shared object of one component, each once, wired to the others.

#include "analyze/model/RdyToRun.h"
#include "analyze/model/RunTime.h"
#include "analyze/model/SysCallList.h"
#include "display/model/Color.h"
#include "platform/Mutex.h"
#include "trace/ContextMng.h"
#include "trace/OSTrace.h"
#include "trace/TraceSource.h"
#include "traceview/model/Marker.h"

struct COSTraceData {
    // Borrows the source.
    explicit COSTraceData(kvx::ITraceSource& from);
    COSTraceData(const COSTraceData&) = delete;
    COSTraceData& operator=(const COSTraceData&) = delete;

    kvx::ITraceSource& source;
    CMutex lock;
    COSTrace engine;
    COSColor colors;
    CRunTimeAnalysis runTime;
    COSSysCallList sysCalls;
    CRdyToRunAnalysis rdyToRun;
    COSMarker markers;
    CContextMng contexts;
};
