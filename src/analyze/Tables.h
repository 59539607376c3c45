#pragma once
// The three tables as they are painted, from the titles down.

#include "analyze/TablePainter.h"
#include "analyze/model/CsvWriter.h"

struct COSTraceData;
class IQOSTraceService;

namespace kvx::table {

// Without a valid trace, and of system calls without the service, the titles alone. Only the rows
// that are painted are asked for.
void DrawTable(CDC& dc, CHeaderCellPainter& painter, const Geometry& geometry, EAnalysis table,
               const CColumnTable& columns, const COSTraceData& data, IQOSTraceService* service);

}  // namespace kvx::table
