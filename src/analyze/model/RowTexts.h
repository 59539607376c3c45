#pragma once
// The texts of one table row, one a column, as the tables show them. Rows of a file hold the same
// texts without their leading blanks.

#include <cstdint>
#include <vector>

#include "platform/Types.h"

class COSTrace;
class CContextMng;
class IQOSTraceService;
struct CRunTime;
struct CRdyToRun;

namespace kvx {

class RowTexts {
  public:
    RowTexts(const COSTrace& engine, const CContextMng& contexts)
        : engine_(engine), contexts_(contexts) {}

    // "VEC" to "Ratio%". Without a record the texts from "Num" on are empty.
    std::vector<CString> RunTime(int line, const CRunTime* record) const;
    // "ID" to "Avg".
    std::vector<CString> RdyToRun(const CRdyToRun& record) const;
    // "No" to "TIME". What the service cannot tell is empty, or 0.
    std::vector<CString> SysCall(IQOSTraceService& service, std::uint32_t history) const;

  private:
    const COSTrace& engine_;
    const CContextMng& contexts_;
};

}  // namespace kvx
