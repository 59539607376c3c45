#include "traceview/TracePainter.h"

#include "platform/base/SystemInfo.h"

namespace kvx::chart {

void LayOut(TraceColumns& columns, ChartViewport& viewport, const FontCell& cell, SIZE area) {
    columns.Layout(cell.width);
    columns.SetChartRight(area.cx);
    const TraceColumns::Column& chart = columns[TraceColumns::kChart];
    viewport.SetCell(cell.width, cell.height);
    viewport.SetChart(chart.left, chart.right);
    viewport.SetHeight(area.cy);
}

ChartItems ItemsOf(TraceDisplay& display, IQOSTraceService* service) {
    if (!display.IsOpen()) return {};
    const COSTraceData& data = display.data;
    return BuildChart(service, display.viewport.Geometry(), data.engine, data.contexts,
                      data.markers, display.viewport.gridTime, display.kept);
}

void DrawTrace(CDC& dc, CHeaderCellPainter& painter, const TraceColumns& columns,
               const FontCell& cell, const TraceDisplay& display, const ChartItems& items,
               COSTip& tips, const BeforeItem& beforeItem) {
    dc.SetTextColor(GetSysColor(COLOR_WINDOWTEXT));
    dc.SetBkColor(GetSysColor(COLOR_WINDOW));
    DrawTitles(dc, painter, columns, cell.height);
    if (!display.IsOpen()) return;
    const ChartViewport& viewport = display.viewport;
    const COSTraceData& data = display.data;
    const ChartGeometry geometry = viewport.Geometry();
    DrawTable(dc, painter, columns, geometry, data.contexts, display.selection,
              data.colors[EColor::SysCallBack]);
    DrawDropMark(dc, geometry, columns[TraceColumns::kVector].left, viewport.dropLine);
    DrawItems(dc, geometry, items, data.colors, tips, beforeItem);
}

}  // namespace kvx::chart
