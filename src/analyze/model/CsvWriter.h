#pragma once
// The three analysis tables as comma-separated values, in display order. Lines end in CR LF; fields
// are neither quoted nor escaped.

#include <functional>
#include <string_view>

#include "analyze/model/RowTexts.h"
#include "trace/TraceSource.h"

class CRunTimeAnalysis;
class CRdyToRunAnalysis;
class COSSysCallList;

// Tables and view modes have the same numbers.
enum class EAnalysis { RunTime = 0, RdyToRun = 1, SysCall = 2 };

class CCsvWriter {
  public:
    // Borrows all.
    CCsvWriter(kvx::ITraceSource& source, const COSTrace& engine, const CContextMng& contexts,
               const CRunTimeAnalysis& runTime, const CRdyToRunAnalysis& rdyToRun,
               const COSSysCallList& sysCalls)
        : source_(source),
          texts_(engine, contexts),
          runTime_(runTime),
          rdyToRun_(rdyToRun),
          sysCalls_(sysCalls) {}

    struct Failure {
        bool opened = false;  // false: the file could not be opened; true: writing failed
        CString reason;       // of the system
    };
    // 1: written. 0: failure tells why (when given), and what the file holds is not to be trusted.
    int Write(EAnalysis table, const CString& path, Failure* failure = nullptr) const;

    // Each line, ended by CR LF, until the sink answers false; false then.
    using Sink = std::function<bool(std::string_view line)>;
    bool WriteLines(EAnalysis table, const Sink& sink) const;

  private:
    bool WriteRunTime(const Sink& sink) const;
    bool WriteRdyToRun(const Sink& sink) const;
    bool WriteSysCalls(const Sink& sink) const;

    kvx::ITraceSource& source_;
    kvx::RowTexts texts_;
    const CRunTimeAnalysis& runTime_;
    const CRdyToRunAnalysis& rdyToRun_;
    const COSSysCallList& sysCalls_;
};
