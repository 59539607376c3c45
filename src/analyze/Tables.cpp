#include "analyze/Tables.h"

#include "host/OSTraceService.h"
#include "trace/TraceData.h"

namespace kvx::table {
namespace {

// The columns of the longest and the shortest interval at which the indicator stands.
template <class Record>
std::vector<std::size_t> ColumnsOfIndicator(const Record& record, std::size_t max,
                                            std::size_t min) {
    std::vector<std::size_t> columns;
    if (record.IndicatorOnMax()) columns.push_back(max);
    if (record.IndicatorOnMin()) columns.push_back(min);
    return columns;
}

void DrawRunTime(CDC& dc, CHeaderCellPainter& painter, const Geometry& geometry,
                 const CColumnTable& columns, const COSTraceData& data) {
    const CRunTimeAnalysis& runTime = data.runTime;
    const RowTexts texts(data.engine, data.contexts);
    DrawRows(dc, painter, geometry, columns, CRunTimeAnalysis::Bar, runTime.RowCount(),
             [&](int k) -> Row {
                 const int line = runTime.Row(k);
                 const CRunTime* const record = runTime.Find(static_cast<std::uint32_t>(line));
                 if (!record) return {texts.RunTime(line, nullptr), {}};
                 return {texts.RunTime(line, record),
                         ColumnsOfIndicator(*record, CRunTimeAnalysis::Max, CRunTimeAnalysis::Min)};
             });
    const CColumnTable::Column& bar = columns[CRunTimeAnalysis::Bar];
    const COLORREF run = data.colors[EColor::Run];
    DrawRatioBars(dc, geometry, bar, runTime, data.contexts, run);
    DrawRatioScale(dc, geometry, bar, data.contexts.GetCount(), run);
}

void DrawRdyToRun(CDC& dc, CHeaderCellPainter& painter, const Geometry& geometry,
                  const CColumnTable& columns, const COSTraceData& data) {
    const RowTexts texts(data.engine, data.contexts);
    DrawRows(dc, painter, geometry, columns, columns.Count(), data.rdyToRun.RowCount(),
             [&](int k) -> Row {
                 const CRdyToRun* const record = data.rdyToRun.Record(data.rdyToRun.Row(k));
                 if (!record) return {};
                 return {
                     texts.RdyToRun(*record),
                     ColumnsOfIndicator(*record, CRdyToRunAnalysis::Max, CRdyToRunAnalysis::Min)};
             });
}

void DrawSysCalls(CDC& dc, CHeaderCellPainter& painter, const Geometry& geometry,
                  const CColumnTable& columns, const COSTraceData& data,
                  IQOSTraceService& service) {
    const RowTexts texts(data.engine, data.contexts);
    std::uint32_t indicated = 0;
    const bool onCall = Succeeded(
        service.GetHistoryIndex(data.markers.GetMarkerEvent(kMarkerIndicator), &indicated));
    DrawRows(dc, painter, geometry, columns, columns.Count(), data.sysCalls.RowCount(),
             [&](int k) -> Row {
                 const std::uint32_t history = data.sysCalls.RowHistoryIndex(k);
                 return {texts.SysCall(service, history), {}, onCall && history == indicated};
             });
}

}  // namespace

void DrawTable(CDC& dc, CHeaderCellPainter& painter, const Geometry& geometry, EAnalysis table,
               const CColumnTable& columns, const COSTraceData& data, IQOSTraceService* service) {
    DrawTitles(dc, painter, columns, geometry.rowHeight);
    if (!data.engine.IsValid() || (table == EAnalysis::SysCall && !service)) return;
    switch (table) {
        case EAnalysis::RunTime:
            DrawRunTime(dc, painter, geometry, columns, data);
            break;
        case EAnalysis::RdyToRun:
            DrawRdyToRun(dc, painter, geometry, columns, data);
            break;
        case EAnalysis::SysCall:
            DrawSysCalls(dc, painter, geometry, columns, data, *service);
            break;
    }
    DrawRightStrip(dc, geometry, columns);
}

}  // namespace kvx::table
