#pragma once
// A table of the OS Analyze window as it is painted, from the titles down.

#include "framework/ColumnTable.h"
#include "platform/drawing/DC.h"

namespace kvx {
class SharedAnalysis;
}

namespace kvx::table {

// Rows from the top of the window, below the title row.
struct Geometry {
    int rowHeight = 0;
    int charWidth = 0;
    int firstRow = 0;
    int visibleRows = 0;  // those that fit as a whole; one more is painted

    int Top(int row) const { return (row + 1) * rowHeight; }
    // Below the last row that is painted.
    int Bottom() const { return rowHeight * (visibleRows + 2); }
    RECT Cell(const CColumnTable::Column& column, int row) const {
        return {column.left, Top(row), column.right, Top(row + 1)};
    }
};

// Without an analysis the titles alone. Only the rows that are painted are asked for. run: the
// colour of bars.
void DrawTable(CDC& dc, CHeaderCellPainter& painter, const Geometry& geometry,
               const CColumnTable& columns, const SharedAnalysis* analysis, COLORREF run);

}  // namespace kvx::table
