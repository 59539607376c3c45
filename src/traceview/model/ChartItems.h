#pragma once
// What a paint of the chart draws, as one list in drawing order. Items that would paint nothing are
// left out; the list drawn in order gives the picture of the full walk to the pixel.

#include <cstdint>
#include <variant>
#include <vector>

#include "traceview/model/ChartGeometry.h"

class COSTrace;
class CContextMng;
class COSMarker;
class IQOSTraceService;

namespace kvx {

// The line of a context that is not shown: what was drawn in it is erased, with its tips.
struct HiddenRow {
    int row = 0;
    friend bool operator==(const HiddenRow&, const HiddenRow&) = default;
};

// The dotted line through the middle of a row.
struct RowLine {
    int row = 0;
    friend bool operator==(const RowLine&, const RowLine&) = default;
};

struct MarkerLine {
    int which = 0;  // kMarkerStart, kMarkerEnd, kMarkerIndicator
    int x = 0;
    friend bool operator==(const MarkerLine&, const MarkerLine&) = default;
};

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

using ChartItem =
    std::variant<RowLine, GridLine, StateBar, SwitchLine, RunBar, Mark, HiddenRow, MarkerLine>;
using ChartItems = std::vector<ChartItem>;

class KeptItems;

// The items of one paint; nothing for a chart without a width. gridTime 0 or less: no grid. Without
// a service nothing of the trace is given. kept: those of the paint before.
ChartItems BuildChart(IQOSTraceService* service, const ChartGeometry& geometry,
                      const COSTrace& engine, const CContextMng& contexts, const COSMarker& markers,
                      double gridTime, KeptItems& kept);

// Grid lines in ascending columns, at most one a column: the one that a walk outwards from the
// anchor draws last.
std::vector<GridLine> BuildGrid(const ChartGeometry& geometry, double gridTime, double anchor);

}  // namespace kvx
