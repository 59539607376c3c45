#pragma once
// Which events fall into which pixel column of the chart.

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

  private:
    std::size_t Index(int x) const { return static_cast<std::size_t>(x - left_); }

    int left_;
    std::vector<std::uint32_t> bounds_;
};

}  // namespace kvx
