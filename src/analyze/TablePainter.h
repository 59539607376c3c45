#pragma once
// The steps in which a table of the OS Analyze window is painted, each for what it draws.

#include <functional>
#include <vector>

#include "framework/ColumnTable.h"
#include "platform/DC.h"

class CContextMng;
class CRunTimeAnalysis;

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

// One row of the table: texts from the first column on, and which columns are inverted.
struct Row {
    std::vector<CString> texts;
    std::vector<std::size_t> inverted;
    bool wholeInverted = false;
};
// Asked for rows of the table that are painted, from the first to the last of them.
using RowSource = std::function<Row(int row)>;

// Framed cells of the first columns; below the last row they are empty, so that they fill the
// window.
void DrawRows(CDC& dc, CHeaderCellPainter& painter, const Geometry& geometry,
              const CColumnTable& columns, std::size_t columnCount, int rowCount,
              const RowSource& source);
// A bar as long as the context's share of the processor, for every row with a record.
void DrawRatioBars(CDC& dc, const Geometry& geometry, const CColumnTable::Column& column,
                   const CRunTimeAnalysis& runTime, const CContextMng& contexts, COLORREF run);
// The quarters of the bars as dotted lines, and their numbers in the title row.
void DrawRatioScale(CDC& dc, const Geometry& geometry, const CColumnTable::Column& column,
                    int contextCount, COLORREF run);
// The strip beside the last column.
void DrawRightStrip(CDC& dc, const Geometry& geometry, const CColumnTable& columns);

}  // namespace kvx::table
