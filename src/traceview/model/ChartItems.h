#pragma once
// What a paint of the chart draws, as small lists in drawing order. Items that would paint nothing
// are left out; a list drawn in order gives the picture of the full walk to the pixel.

#include <cstdint>
#include <vector>

#include "traceview/model/ChartGeometry.h"

class COSTrace;
class CContextMng;

namespace kvx {

// Columns x1 to x2 - 1 of a line, for the event that opens the interval.
struct Bar {
    int line = 0;
    int x1 = 0;
    int x2 = 0;
    std::uint32_t event = 0;
    friend bool operator==(const Bar&, const Bar&) = default;
};

struct StateBar : Bar {
    int state = 0;  // 1 to 13
    bool suspended = false;
    bool paused = false;
    friend bool operator==(const StateBar&, const StateBar&) = default;
};

struct RunBar : Bar {
    bool hatched = false;
    friend bool operator==(const RunBar&, const RunBar&) = default;
};

// A vertical line from y1 (included) to y2 (excluded), y2 above or below y1.
struct SwitchLine {
    int x = 0;
    int y1 = 0;
    int y2 = 0;
    bool dashed = false;
    std::uint32_t event = 0;
    friend bool operator==(const SwitchLine&, const SwitchLine&) = default;
};

// A system-call mark centred on column x.
struct Mark {
    int line = 0;
    int x = 0;
    int cls = 0;
    std::uint32_t event = 0;
    friend bool operator==(const Mark&, const Mark&) = default;
};

struct GridLine {
    int x = 0;
    std::int64_t number = 0;  // 0 at the start marker, negative left of it
    friend bool operator==(const GridLine&, const GridLine&) = default;
};

// In the order of drawing. The walk draws each dispatch's switch line and then its RUN bar; drawing
// all switch lines first gives the same picture, for the only RUN bar that covers a column belongs
// to that column's last dispatch.
struct ChartItems {
    std::vector<GridLine> grid;
    std::vector<StateBar> states;
    std::vector<SwitchLine> switches;
    std::vector<RunBar> runs;
    std::vector<Mark> marks;
};

// The items of one paint. gridTime 0 or less: no grid; anchor: the start marker's time. Without a
// trace service only the grid is given.
ChartItems BuildChart(const ChartGeometry& geometry, const COSTrace& engine,
                      const CContextMng& contexts, double gridTime, double anchor);

// Grid lines in ascending columns, at most one a column: the one that a walk outwards from the
// anchor draws last.
std::vector<GridLine> BuildGrid(const ChartGeometry& geometry, double gridTime, double anchor);

}  // namespace kvx
