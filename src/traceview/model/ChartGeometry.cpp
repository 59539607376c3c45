#include "traceview/model/ChartGeometry.h"

#include <algorithm>

int ChartGeometry::X(double t) const {
    constexpr double kFar = 1 << 29;
    const double width = right - left - 1;
    const double offset = (t - displayStart) * (width / (traceEnd - traceStart)) * scale;
    if (offset != offset) return left;
    return left + static_cast<int>(std::clamp(offset, -kFar, kFar));
}

double ChartGeometry::TimeAt(int x) const {
    const double width = right - left - 1;
    if (width <= 0.0 || scale == 0.0) return displayStart;
    return displayStart + (x - left) * ((traceEnd - traceStart) / width) / scale;
}

int ChartGeometry::LastDrawnLine() const {
    return std::min(firstLine + visibleLines, lineCount - 1);
}
