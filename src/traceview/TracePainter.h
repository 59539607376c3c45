#pragma once
// The OS Trace window from its titles down, as the window and pictures of it are painted.

#include "framework/FontCell.h"
#include "traceview/ChartPainter.h"
#include "traceview/model/TraceDisplay.h"

namespace kvx::chart {

// Columns from left to right; the chart reaches to the right edge of the area.
void LayOut(TraceColumns& columns, ChartViewport& viewport, const FontCell& cell, SIZE area);
// What the chart shows of the display; nothing while no trace is open.
ChartItems ItemsOf(TraceDisplay& display, IQOSTraceService* service);
// In the selected font. While no trace is open, the titles alone.
void DrawTrace(CDC& dc, CHeaderCellPainter& painter, const TraceColumns& columns,
               const FontCell& cell, const TraceDisplay& display, const ChartItems& items,
               COSTip& tips, const BeforeItem& beforeItem = {});

}  // namespace kvx::chart
