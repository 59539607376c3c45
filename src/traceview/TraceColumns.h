#pragma once
// The five columns of the OS Trace window: four of the table and the chart.

#include "framework/ColumnTable.h"

class TraceColumns : public CColumnTable {
  public:
    static constexpr std::size_t kVector = 0;
    static constexpr std::size_t kTable = 1;
    static constexpr std::size_t kId = 2;
    static constexpr std::size_t kName = 3;
    static constexpr std::size_t kChart = 4;

    TraceColumns();

    // Widths in pixels from those in characters, then the edges from left to right.
    void Layout(int charWidth);
    // The chart reaches to the client area's right edge.
    void SetChartRight(int right) { At(kChart).right = right; }
    // The table column whose right edge is under x.
    std::optional<std::size_t> EdgeAt(int x) const { return EdgeAmong(kChart, x); }

    // "5,8,5,12,0"; a text that is not five numbers changes nothing and answers false.
    CString SettingsText() const;
    bool TakeSettings(const CString& text);
};
