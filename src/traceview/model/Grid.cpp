#include <algorithm>
#include <cmath>

#include "trace/TimeSearch.h"
#include "traceview/model/ChartItems.h"

namespace kvx {

namespace {

// Differences of numbers stay within 64 bits.
constexpr double kMostNumbers = 2305843009213693952.0;

std::int64_t ToNumber(double number) {
    return static_cast<std::int64_t>(std::clamp(number, -kMostNumbers, kMostNumbers));
}

}  // namespace

std::vector<GridLine> BuildGrid(const ChartGeometry& geometry, double gridTime, double anchor) {
    std::vector<GridLine> lines;
    if (!(gridTime > 0.0)) return lines;
    const auto time = [&](std::int64_t n) { return anchor + static_cast<double>(n) * gridTime; };
    const auto x = [&](std::int64_t n) { return geometry.X(time(n)); };

    // One more on either side, for the divisions round. Lines left of the display belong to the
    // walk to the right of an anchor that lies left of it, and the other way round.
    const double from = std::min(geometry.displayStart, anchor);
    const double to = std::max(geometry.displayEnd, anchor);
    const std::int64_t low = ToNumber(std::floor((from - anchor) / gridTime)) - 1;
    const std::int64_t high = ToNumber(std::ceil((to - anchor) / gridTime)) + 1;
    const auto first = FirstWhere(low, high, [&](std::int64_t n) {
        return x(n) >= geometry.left && (n >= 0 || time(n) >= geometry.displayStart);
    });
    const auto end = FirstWhere(first, high, [&](std::int64_t n) {
        return x(n) > geometry.right || (n > 0 && time(n) > geometry.displayEnd);
    });
    const bool rightward = anchor <= geometry.displayEnd;
    for (std::int64_t n = first; n < end;) {
        const int column = x(n);
        const auto next =
            FirstWhere(n + 1, end, [&](std::int64_t other) { return x(other) > column; });
        // The walk to the left ends a column with its smallest number, the walk to the right, which
        // comes after it, with its largest.
        lines.push_back({column, rightward && next > 0 ? next - 1 : n});
        n = next;
    }
    return lines;
}

}  // namespace kvx
