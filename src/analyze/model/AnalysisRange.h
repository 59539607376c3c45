#pragma once
// What part of a trace the analyses are about.

#include <cstdint>

namespace kvx {

struct AnalysisRange {
    double start = 0.0;  // counts
    double end = 0.0;
    std::uint32_t first = 0;       // event at the start
    std::uint32_t last = 0;        // event at the end: the last one whose run or call counts
    std::uint32_t waitsBelow = 0;  // waits end with dispatches below this event
};

}  // namespace kvx
