#include "analyze/TablePainter.h"

#include "analyze/model/RunTime.h"
#include "trace/ContextMng.h"

namespace kvx::table {
namespace {

constexpr COLORREF kWhite = RGB(255, 255, 255);

void Invert(CDC& dc, const RECT& rect) {
    dc.PatBlt(rect.left, rect.top, rect.Width(), rect.Height(), DSTINVERT);
}

void DrawCells(CDC& dc, CHeaderCellPainter& painter, const Geometry& geometry,
               const CColumnTable& columns, std::size_t columnCount, int row, const Row& content) {
    static const CString kNoText;
    for (std::size_t i = 0; i < columnCount; ++i) {
        const CColumnTable::Column& column = columns[i];
        const RECT cell = geometry.Cell(column, row);
        if (!column.visible || cell.IsRectEmpty()) continue;
        const CString& text = i < content.texts.size() ? content.texts[i] : kNoText;
        painter.Draw(dc, cell, text, false, column.align);
    }
    for (const std::size_t i : content.inverted) Invert(dc, geometry.Cell(columns[i], row));
    if (!content.wholeInverted) return;
    RECT whole = geometry.Cell(columns[columnCount - 1], row);
    whole.left = 0;
    Invert(dc, whole);
}

// The part of the column that the ratio covers; empty for 0.
RECT RatioBar(const Geometry& geometry, const CColumnTable::Column& column, int row, double ratio) {
    const int middle = geometry.Top(row) + geometry.rowHeight / 2;
    const int half = geometry.rowHeight / 4;
    const double right = column.left + (column.right - column.left) * ratio;
    return {column.left, middle - half, static_cast<int>(right), middle + half};
}

}  // namespace

void DrawRows(CDC& dc, CHeaderCellPainter& painter, const Geometry& geometry,
              const CColumnTable& columns, std::size_t columnCount, int rowCount,
              const RowSource& source) {
    for (int r = 0; r <= geometry.visibleRows; ++r) {
        const int k = geometry.firstRow + r;
        DrawCells(dc, painter, geometry, columns, columnCount, r, k < rowCount ? source(k) : Row{});
    }
}

void DrawRatioBars(CDC& dc, const Geometry& geometry, const CColumnTable::Column& column,
                   const CRunTimeAnalysis& runTime, const CContextMng& contexts, COLORREF run) {
    dc.FillSolidRect({column.left, geometry.rowHeight, column.right, geometry.Bottom()}, kWhite);
    const CBrush solid(run);
    const CBrush hatched(HS_DIAGCROSS, run);
    for (int r = 0; r <= geometry.visibleRows; ++r) {
        const int k = geometry.firstRow + r;
        if (k >= runTime.RowCount()) break;
        const int line = runTime.Row(k);
        const CRunTime* const record = runTime.Find(static_cast<std::uint32_t>(line));
        if (!record) continue;
        const bool hatch = line < contexts.GetCount() && contexts.IsHatched(line) == 1;
        dc.FillRect(RatioBar(geometry, column, r, record->Ratio), hatch ? &hatched : &solid);
    }
}

void DrawRatioScale(CDC& dc, const Geometry& geometry, const CColumnTable::Column& column,
                    int contextCount, COLORREF run) {
    const int width = column.right - column.left;
    if (width <= 0) return;
    CPen dotted(PS_DOT, 1, run);
    CPen* const previous = dc.SelectObject(&dotted);
    const int bottom = (contextCount - geometry.firstRow + 1) * geometry.rowHeight;
    for (const int x : {width / 4, width / 2, 3 * width / 4}) {
        dc.MoveTo(column.left + x, geometry.rowHeight);
        dc.LineTo(column.left + x, bottom);
    }
    dc.SelectObject(previous);

    struct Label {
        int x;
        const char* text;
    };
    const Label labels[] = {
        {column.left, "0"},
        {column.left + width / 4 - geometry.charWidth, "25"},
        {column.left + width / 2 - geometry.charWidth, "50"},
        {column.left + 3 * width / 4 - geometry.charWidth, "75"},
        {column.right - 3 * geometry.charWidth, "100"},
    };
    const RECT title = {column.left, 0, column.right, geometry.rowHeight};
    const int mode = dc.SetBkMode(TRANSPARENT);
    for (const Label& label : labels) dc.ExtTextOut(label.x, 0, ETO_CLIPPED, &title, label.text);
    dc.SetBkMode(mode);
}

void DrawRightStrip(CDC& dc, const Geometry& geometry, const CColumnTable& columns) {
    const int right = columns[columns.Count() - 1].right;
    dc.FillSolidRect({right, 0, right + geometry.charWidth, geometry.Bottom()}, kWhite);
}

}  // namespace kvx::table
