#pragma once
// How the OS Trace window is painted: the table, then the items of the chart in their order.
// Elements with a tip are noted as they are drawn.

#include <functional>

#include "display/model/Color.h"
#include "framework/HeaderCellPainter.h"
#include "platform/drawing/DC.h"
#include "trace/ContextMng.h"
#include "traceview/Tip.h"
#include "traceview/TraceColumns.h"
#include "traceview/model/ChartItems.h"
#include "traceview/model/LineSelection.h"

namespace kvx::chart {

// Table cells of every visible row, the background of system-call processes, and the inversion of
// selected lines.
void DrawTable(CDC& dc, CHeaderCellPainter& painter, const TraceColumns& columns,
               const ChartGeometry& geometry, const CContextMng& contexts,
               const LineSelection& selection, COLORREF sysCallBack);
// The mark where a dragged line would land, from the table's left edge on (dropLine -1: none).
void DrawDropMark(CDC& dc, const ChartGeometry& geometry, int tableLeft, int dropLine);
// The items in their order. A number of the grid that would run into the one before it is left out;
// its line stays.
// beforeItem, where there is one, is told of each of them.
using BeforeItem = std::function<void(const ChartItem& item)>;
void DrawItems(CDC& dc, const ChartGeometry& geometry, const ChartItems& items,
               const COSColor& colors, COSTip& tips, const BeforeItem& beforeItem = {});

}  // namespace kvx::chart
