#include "traceview/ChartPainter.h"

#include <algorithm>
#include <array>

#include "host/TraceCodes.h"
#include "platform/SystemInfo.h"

namespace kvx::chart {
namespace {

constexpr COLORREF kBlack = RGB(0, 0, 0);

// A band of half the given fraction of a line's height around the centre of a line.
RECT Band(const ChartGeometry& geometry, const Bar& bar, int fraction) {
    const int y = geometry.LineCentre(bar.line);
    const int half = geometry.lineHeight / fraction;
    return {bar.x1, y - half, bar.x2, y + half};
}

RECT ChartRow(const ChartGeometry& geometry, int row) {
    const int h = geometry.lineHeight;
    return {geometry.left, (row + 1) * h, geometry.right, (row + 2) * h};
}

void DrawVertical(CDC& dc, int x, int top, int bottom) {
    dc.MoveTo(x, top);
    dc.LineTo(x, bottom);
}

}  // namespace

void DrawTable(CDC& dc, CHeaderCellPainter& painter, const TraceColumns& columns,
               const ChartGeometry& geometry, const CContextMng& contexts,
               const LineSelection& selection, COLORREF sysCallBack) {
    const int h = geometry.lineHeight;
    for (int row = 0; row <= geometry.visibleLines; ++row) {
        const int line = geometry.firstLine + row;
        const bool exists = line < contexts.GetCount();
        const ContextTexts texts = exists ? contexts.GetTexts(line) : ContextTexts{};
        const std::array<const CString*, TraceColumns::kChart> cells = {&texts.vector, &texts.table,
                                                                        &texts.id, &texts.name};
        const bool selected = exists && selection.Contains(contexts.GetKey(line));
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const TraceColumns::Column& column = columns[i];
            const RECT cell = {column.left, (row + 1) * h, column.right, (row + 2) * h};
            if (!column.visible || cell.IsRectEmpty()) continue;
            painter.Draw(dc, cell, *cells[i], false, CellAlign::Left);
            if (selected) dc.PatBlt(cell.left, cell.top, cell.Width(), cell.Height(), DSTINVERT);
        }
        if (exists && contexts.IsSysCallProcess(line)) {
            dc.FillSolidRect(ChartRow(geometry, row), sysCallBack);
        }
    }
}

void DrawRowLines(CDC& dc, const ChartGeometry& geometry, int tableLeft, int dropLine,
                  COLORREF run) {
    CPen drop(PS_SOLID, 3, kBlack);
    CPen dotted(PS_DOT, 1, run);
    CPen* const previous = dc.SelectObject(&dotted);
    const int dropRow =
        dropLine < 0 ? -1 : std::min(dropLine, geometry.lineCount) - geometry.firstLine;
    for (int row = 0; row <= geometry.visibleLines; ++row) {
        if (row == dropRow) {
            dc.SelectObject(&drop);
            dc.MoveTo(tableLeft, (row + 1) * geometry.lineHeight);
            dc.LineTo(geometry.right, (row + 1) * geometry.lineHeight);
            dc.SelectObject(&dotted);
        }
        if (geometry.firstLine + row >= geometry.lineCount) continue;
        dc.MoveTo(geometry.left, geometry.RowCentre(row));
        dc.LineTo(geometry.right, geometry.RowCentre(row));
    }
    dc.SelectObject(previous);
}

void DrawGrid(CDC& dc, const ChartGeometry& geometry, const std::vector<GridLine>& grid,
              COLORREF run) {
    CPen dotted(PS_DOT, 1, run);
    CPen* const previous = dc.SelectObject(&dotted);
    const int mode = dc.SetBkMode(TRANSPARENT);
    int free = geometry.left;
    for (const GridLine& line : grid) {
        DrawVertical(dc, line.x, geometry.lineHeight, geometry.LinesBottom());
        if (line.x < free) continue;
        const CString number = std::to_string(line.number);
        dc.TextOut(line.x, 0, number);
        free = line.x + dc.GetTextExtent(number).cx + geometry.charWidth / 2;
    }
    dc.SetBkMode(mode);
    dc.SelectObject(previous);
}

void DrawStates(CDC& dc, const ChartGeometry& geometry, const std::vector<StateBar>& bars,
                const COSColor& colors, COSTip& tips) {
    for (const StateBar& bar : bars) {
        const RECT band = Band(geometry, bar, 6);
        dc.FillSolidRect(band, colors.GetTaskStateColor(bar.state));
        tips.AddTipRect(band, bar.event);
        if (bar.suspended) dc.FillSolidRect(Band(geometry, bar, 7), colors[EColor::Sus]);
        if (bar.paused) dc.FillSolidRect(Band(geometry, bar, 8), colors[EColor::Pause]);
    }
}

void DrawSwitches(CDC& dc, const std::vector<SwitchLine>& switches, COLORREF run) {
    CPen solid(PS_SOLID, 1, run);
    CPen dashed(PS_DASH, 1, run);
    CPen* const previous = dc.SelectObject(&solid);
    for (const SwitchLine& line : switches) {
        dc.SelectObject(line.dashed ? &dashed : &solid);
        DrawVertical(dc, line.x, line.y1, line.y2);
    }
    dc.SelectObject(previous);
}

void DrawRuns(CDC& dc, const ChartGeometry& geometry, const std::vector<RunBar>& bars, COLORREF run,
              COSTip& tips) {
    const CBrush solid(run);
    const CBrush hatched(HS_DIAGCROSS, run);
    for (const RunBar& bar : bars) {
        const RECT band = Band(geometry, bar, 4);
        dc.FillRect(band, bar.hatched ? &hatched : &solid);
        tips.AddTipRect(band, bar.event);
    }
}

void DrawMarks(CDC& dc, const ChartGeometry& geometry, const std::vector<Mark>& marks,
               const COSColor& colors, COSTip& tips) {
    std::array<CBrush, host::kCallClasses + 1> brushes;
    for (int cls = 0; cls <= host::kCallClasses; ++cls) {
        brushes[static_cast<std::size_t>(cls)].CreateSolidBrush(colors.GetSysCallColor(cls));
    }
    CPen pen(PS_SOLID, 1, colors[EColor::Run]);
    CPen* const previousPen = dc.SelectObject(&pen);
    CBrush* const previousBrush = dc.SelectObject(&brushes[0]);
    const int h = geometry.lineHeight;
    for (const Mark& mark : marks) {
        const int y = geometry.LineCentre(mark.line);
        const RECT rect = {mark.x - geometry.charWidth / 2, y - h / 3,
                           mark.x + geometry.charWidth / 2, y + h / 3};
        const bool known = mark.cls > 0 && mark.cls <= host::kCallClasses;
        dc.SelectObject(&brushes[known ? static_cast<std::size_t>(mark.cls) : 0]);
        dc.RoundRect(rect.left, rect.top, rect.right, rect.bottom, h, h);
        tips.AddTipRect(rect, mark.event);
    }
    dc.SelectObject(previousBrush);
    dc.SelectObject(previousPen);
}

void BlankHiddenLines(CDC& dc, const ChartGeometry& geometry, const CContextMng& contexts,
                      COSTip& tips) {
    for (int line = geometry.firstLine; line <= geometry.LastDrawnLine(); ++line) {
        if (contexts.IsShown(line)) continue;
        const RECT row = ChartRow(geometry, line - geometry.firstLine);
        dc.FillSolidRect(row, GetSysColor(COLOR_WINDOW));
        tips.RemoveTipRects(row);
    }
}

void DrawMarkers(CDC& dc, const ChartGeometry& geometry, const COSMarker& markers,
                 const COSColor& colors) {
    constexpr std::array<EColor, 3> kColors = {EColor::MarkerS, EColor::MarkerE, EColor::Indicator};
    for (int which = kMarkerStart; which <= kMarkerIndicator; ++which) {
        const double time = markers.GetMarkerTime(which);
        if (!geometry.InDisplay(time)) continue;
        CPen pen(PS_SOLID, 1, colors[kColors[static_cast<std::size_t>(which)]]);
        CPen* const previous = dc.SelectObject(&pen);
        DrawVertical(dc, geometry.X(time), geometry.lineHeight, geometry.LinesBottom());
        dc.SelectObject(previous);
    }
}

}  // namespace kvx::chart
