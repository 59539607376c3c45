#pragma once
// Every shared object of one component, each once, wired to the others.

#include <array>

#include "analyze/model/RdyToRun.h"
#include "analyze/model/RunTime.h"
#include "analyze/model/SysCallList.h"
#include "display/model/Color.h"
#include "platform/base/Mutex.h"
#include "trace/ContextMng.h"
#include "trace/OSTrace.h"
#include "trace/TraceSource.h"
#include "traceview/model/Marker.h"

// The modes of the OS Analyze window, numbered as they are stored.
enum class EAnalysis { RunTime = 0, RdyToRun = 1, SysCall = 2 };

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

    // The tables of the modes, one line each here and in kForms.
    const std::array<kvx::SharedAnalysis*, 3> analyses = {&runTime, &rdyToRun, &sysCalls};
    static constexpr std::array<const kvx::AnalysisForm*, 3> kForms = {
        &CRunTimeAnalysis::kForm, &CRdyToRunAnalysis::kForm, &COSSysCallList::kForm};
    kvx::SharedAnalysis& Table(EAnalysis mode) const {
        return *analyses[static_cast<std::size_t>(mode)];
    }
};
