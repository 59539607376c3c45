#pragma once
// Every shared object of one component, each once, wired to the others.

#include "analyze/model/RdyToRun.h"
#include "analyze/model/RunTime.h"
#include "analyze/model/SysCallList.h"
#include "display/model/Color.h"
#include "platform/Mutex.h"
#include "trace/ContextMng.h"
#include "trace/OSTrace.h"
#include "traceview/model/Marker.h"

struct COSTraceData {
    COSTraceData();
    COSTraceData(const COSTraceData&) = delete;
    COSTraceData& operator=(const COSTraceData&) = delete;

    CMutex lock;
    COSTrace engine;
    COSColor colors;
    CRunTimeAnalysis runTime;
    COSSysCallList sysCalls;
    CRdyToRunAnalysis rdyToRun;
    COSMarker markers;
    CContextMng contexts;
};
