#include "analyze/TablePainter.h"

#include "analyze/model/SharedAnalysis.h"

namespace kvx::table {
namespace {

constexpr COLORREF kWhite = RGB(255, 255, 255);

void Invert(CDC& dc, const RECT& rect) {
    dc.PatBlt(rect.left, rect.top, rect.Width(), rect.Height(), DSTINVERT);
}

bool IsBar(const SharedAnalysis& analysis, std::size_t column) {
    return analysis.Form().columns[column].kind == ValueKind::Bar;
}

void DrawCells(CDC& dc, CHeaderCellPainter& painter, const Geometry& geometry,
               const CColumnTable& columns, const SharedAnalysis& analysis, int r,
               std::optional<int> indicated) {
    const int k = geometry.firstRow + r;
    const bool there = k < analysis.RowCount();
    const int row = there ? analysis.Row(k) : 0;
    for (std::size_t i = 0; i < columns.Count(); ++i) {
        const CColumnTable::Column& column = columns[i];
        const RECT cell = geometry.Cell(column, r);
        if (IsBar(analysis, i) || !column.visible || cell.IsRectEmpty()) continue;
        const CString text = there ? analysis.Cell(row, static_cast<int>(i)) : CString();
        painter.Draw(dc, cell, text, false, column.align);
    }
    if (!there) return;
    for (std::size_t i = 0; i < columns.Count(); ++i) {
        if (analysis.IsCellIndicated(row, static_cast<int>(i)))
            Invert(dc, geometry.Cell(columns[i], r));
    }
    if (indicated != row) return;
    RECT whole = geometry.Cell(columns[columns.Count() - 1], r);
    whole.left = 0;
    Invert(dc, whole);
}

// Framed cells; below the last row they are empty, so that they fill the window.
void DrawRows(CDC& dc, CHeaderCellPainter& painter, const Geometry& geometry,
              const CColumnTable& columns, const SharedAnalysis& analysis) {
    const std::optional<int> indicated = analysis.IndicatedRow();
    for (int r = 0; r <= geometry.visibleRows; ++r)
        DrawCells(dc, painter, geometry, columns, analysis, r, indicated);
}

// The part of the column that the ratio covers; empty for 0.
RECT RatioBar(const Geometry& geometry, const CColumnTable::Column& column, int row, double ratio) {
    const int middle = geometry.Top(row) + geometry.rowHeight / 2;
    const int half = geometry.rowHeight / 4;
    const double right = column.left + (column.right - column.left) * ratio;
    return {column.left, middle - half, static_cast<int>(right), middle + half};
}

// A bar as long as the row's share of the range.
void DrawBars(CDC& dc, const Geometry& geometry, const CColumnTable::Column& column,
              const SharedAnalysis& analysis, COLORREF run) {
    dc.FillSolidRect({column.left, geometry.rowHeight, column.right, geometry.Bottom()}, kWhite);
    const CBrush solid(run);
    const CBrush hatched(HS_DIAGCROSS, run);
    for (int r = 0; r <= geometry.visibleRows; ++r) {
        const int k = geometry.firstRow + r;
        if (k >= analysis.RowCount()) break;
        if (const auto bar = analysis.BarOf(analysis.Row(k)))
            dc.FillRect(RatioBar(geometry, column, r, bar->share),
                        bar->hatched ? &hatched : &solid);
    }
}

// The quarters of the bars as dotted lines, and their numbers in the title row.
void DrawBarScale(CDC& dc, const Geometry& geometry, const CColumnTable::Column& column, int rows,
                  COLORREF run) {
    const int width = column.right - column.left;
    if (width <= 0) return;
    CPen dotted(PS_DOT, 1, run);
    CPen* const previous = dc.SelectObject(&dotted);
    const int bottom = (rows - geometry.firstRow + 1) * geometry.rowHeight;
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

// The strip beside the last column.
void DrawRightStrip(CDC& dc, const Geometry& geometry, const CColumnTable& columns) {
    const int right = columns[columns.Count() - 1].right;
    dc.FillSolidRect({right, 0, right + geometry.charWidth, geometry.Bottom()}, kWhite);
}

}  // namespace

void DrawTable(CDC& dc, CHeaderCellPainter& painter, const Geometry& geometry,
               const CColumnTable& columns, const SharedAnalysis* analysis, COLORREF run) {
    DrawTitles(dc, painter, columns, geometry.rowHeight);
    if (!analysis) return;
    DrawRows(dc, painter, geometry, columns, *analysis);
    for (std::size_t i = 0; i < columns.Count(); ++i) {
        if (!IsBar(*analysis, i)) continue;
        DrawBars(dc, geometry, columns[i], *analysis, run);
        DrawBarScale(dc, geometry, columns[i], analysis->RowCount(), run);
    }
    DrawRightStrip(dc, geometry, columns);
}

}  // namespace kvx::table
