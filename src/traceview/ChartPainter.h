#pragma once
// The steps in which the OS Trace window is painted, each for what it draws. Elements with a tip
// are noted in drawing order.

#include "display/model/Color.h"
#include "framework/HeaderCellPainter.h"
#include "platform/DC.h"
#include "trace/ContextMng.h"
#include "traceview/Tip.h"
#include "traceview/TraceColumns.h"
#include "traceview/model/ChartItems.h"
#include "traceview/model/LineSelection.h"
#include "traceview/model/Marker.h"

namespace kvx::chart {

// Table cells of every visible row, the background of system-call processes, and the inversion of
// selected lines.
void DrawTable(CDC& dc, CHeaderCellPainter& painter, const TraceColumns& columns,
               const ChartGeometry& geometry, const CContextMng& contexts,
               const LineSelection& selection, COLORREF sysCallBack);
// The dotted line of every context, and the mark where a dragged line would land (-1: none).
void DrawRowLines(CDC& dc, const ChartGeometry& geometry, int tableLeft, int dropLine,
                  COLORREF run);
// A number that would run into the one before it is left out; its line stays.
void DrawGrid(CDC& dc, const ChartGeometry& geometry, const std::vector<GridLine>& grid,
              COLORREF run);
void DrawStates(CDC& dc, const ChartGeometry& geometry, const std::vector<StateBar>& bars,
                const COSColor& colors, COSTip& tips);
void DrawSwitches(CDC& dc, const std::vector<SwitchLine>& switches, COLORREF run);
void DrawRuns(CDC& dc, const ChartGeometry& geometry, const std::vector<RunBar>& bars, COLORREF run,
              COSTip& tips);
void DrawMarks(CDC& dc, const ChartGeometry& geometry, const std::vector<Mark>& marks,
               const COSColor& colors, COSTip& tips);
// Erases the chart of lines that are not shown, tips included.
void BlankHiddenLines(CDC& dc, const ChartGeometry& geometry, const CContextMng& contexts,
                      COSTip& tips);
void DrawMarkers(CDC& dc, const ChartGeometry& geometry, const COSMarker& markers,
                 const COSColor& colors);

}  // namespace kvx::chart
