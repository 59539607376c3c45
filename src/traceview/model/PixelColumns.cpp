#include "traceview/model/PixelColumns.h"

#include <algorithm>

#include "trace/TimeSearch.h"

namespace kvx {

PixelColumns::PixelColumns(const host::OSTraceColumns& columns, const ChartGeometry& geometry)
    : left_(geometry.left) {
    const auto time = [&](std::uint32_t e) { return static_cast<double>(columns.time[e]); };
    const std::uint32_t end = FirstWhere(
        0u, columns.eventCount, [&](std::uint32_t e) { return time(e) > geometry.displayEnd; });
    std::uint32_t low =
        FirstWhere(0u, end, [&](std::uint32_t e) { return geometry.X(time(e)) >= geometry.left; });
    bounds_.reserve(static_cast<std::size_t>(geometry.right - geometry.left) + 2);
    bounds_.push_back(low);
    std::uint32_t events = 0;  // of the column before; columns tend to have as many
    for (int x = geometry.left; x <= geometry.right; ++x) {
        const auto beyond = [&](std::uint32_t e) { return geometry.X(time(e)) > x; };
        std::uint32_t step = events / 4 + 1;
        while (step < end - low && !beyond(low + step)) {
            low += step;
            step *= 2;
        }
        low = FirstWhere(low, low + std::min(step, end - low), beyond);
        events = low - bounds_.back();
        bounds_.push_back(low);
    }
}

}  // namespace kvx
