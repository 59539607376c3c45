#pragma once
// Which events fall into which pixel column of the chart.

#include <algorithm>
#include <span>
#include <vector>

#include "host/OSTraceColumns.h"
#include "traceview/model/ChartGeometry.h"

namespace kvx {

// Events after the display's end belong to no column, as if the trace ended with it.
class PixelColumns {
  public:
    PixelColumns(const host::OSTraceColumns& columns, const ChartGeometry& geometry);

    // Events of the column are from First to Beyond - 1; x from the chart's left edge to its right
    // edge (included).
    std::uint32_t First(int x) const { return bounds_[Index(x)]; }
    std::uint32_t Beyond(int x) const { return bounds_[Index(x) + 1]; }

    // First of the left edge, then Beyond of every column.
    std::span<const std::uint32_t> Bounds() const { return bounds_; }

    // Column of an event that belongs to one and is not left of the column from.
    int ColumnOf(std::uint32_t event, int from) const {
        const auto begin = bounds_.begin() + static_cast<std::ptrdiff_t>(Index(from)) + 1;
        std::ptrdiff_t step = 1;
        auto at = begin;
        while (bounds_.end() - at > step && at[step] <= event) {
            at += step;
            step *= 2;
        }
        const auto end = bounds_.end() - at > step ? at + step : bounds_.end();
        return from + static_cast<int>(std::upper_bound(at, end, event) - begin);
    }

  private:
    std::size_t Index(int x) const { return static_cast<std::size_t>(x - left_); }

    int left_;
    std::vector<std::uint32_t> bounds_;
};

}  // namespace kvx
