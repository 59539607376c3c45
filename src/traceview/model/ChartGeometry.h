#pragma once
// Where the chart puts times and lines: the one mapping that drawing, markers, tips and scrolling
// share. Pixels are client coordinates.

#include "platform/base/Types.h"

struct ChartGeometry {
    int left = 0;  // edges of the chart column
    int right = 0;
    double traceStart = 0.0;
    double traceEnd = 0.0;
    double displayStart = 0.0;
    double displayEnd = 0.0;
    double scale = 0.0;
    int lineHeight = 0;  // the header row is as high
    int charWidth = 0;
    int clientHeight = 0;
    int firstLine = 0;     // context shown in the top line
    int visibleLines = 0;  // the line after these may be cut by the window's bottom
    int lineCount = 0;     // of the context table

    // Column of a time, truncated toward zero from left. Times far outside give columns far
    // outside, never an overflow.
    int X(double t) const;
    // The time at the left edge of column x (not rounded to a count).
    double TimeAt(int x) const;
    bool InDisplay(double t) const { return displayStart <= t && t <= displayEnd; }
    bool InChart(int x) const { return left <= x && x <= right; }

    // The visible line at y, 0 for the top one; -1 in the header row.
    int RowAt(int y) const { return lineHeight > 0 ? y / lineHeight - 1 : -1; }
    // Centre of the visible line row (0 is the top line); rows may be negative.
    int RowCentre(int row) const { return (row + 1) * lineHeight + lineHeight / 2; }
    int LineCentre(int line) const { return RowCentre(line - firstLine); }
    int LinesBottom() const { return (lineCount - firstLine + 1) * lineHeight; }
    // The line is drawn, whole or cut.
    bool LineDrawn(int line) const { return line >= firstLine && line <= firstLine + visibleLines; }
    // Last line that is drawn and exists; below firstLine when there is none.
    int LastDrawnLine() const;
    friend bool operator==(const ChartGeometry&, const ChartGeometry&) = default;
};
