#pragma once
// The five columns of the OS Trace window: four of the table and the chart.

#include <array>
#include <optional>

#include "platform/Types.h"

class TraceColumns {
  public:
    struct Column {
        bool visible = true;
        int characters = 0;  // width in characters
        int left = 0;        // edges and width in pixels
        int right = 0;
        int width = 0;
    };
    static constexpr std::size_t kVector = 0;
    static constexpr std::size_t kTable = 1;
    static constexpr std::size_t kId = 2;
    static constexpr std::size_t kName = 3;
    static constexpr std::size_t kChart = 4;
    static constexpr std::size_t kCount = 5;

    TraceColumns();

    const Column& operator[](std::size_t which) const { return columns_[which]; }
    static const char* Title(std::size_t which);

    // Widths in pixels from those in characters, then the edges from left to right.
    void Layout(int charWidth);
    // The chart reaches to the client area's right edge.
    void SetChartRight(int right) { columns_[kChart].right = right; }
    // The table column whose right edge is within two pixels of x.
    std::optional<std::size_t> EdgeAt(int x) const;
    // Where the column's edge may be dragged to.
    int ClampEdge(std::size_t which, int x, int clientWidth) const;
    // Gives the column the right edge x; Layout must follow.
    void SetRightEdge(std::size_t which, int x, int charWidth);

    // "5,8,5,12,0"; a text that is not five numbers changes nothing and answers false.
    CString SettingsText() const;
    bool TakeSettings(const CString& text);

  private:
    std::array<Column, kCount> columns_;
};
