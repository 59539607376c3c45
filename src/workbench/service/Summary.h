#pragma once
// A recording in numbers, for `info` and the window that shows losses.

#include <cstdint>
#include <string>
#include <vector>

#include "workbench/service/Loss.h"

namespace kvx::service {

struct Totals {
    std::uint64_t events = 0;
    std::uint64_t dispatches = 0;
    std::uint64_t stateChanges = 0;
    std::uint64_t systemCalls = 0;
};

struct ProcessorTotals : Totals {
    std::uint32_t processor = 0;
};

struct Summary {
    std::string path;
    std::string format;
    std::uint32_t shownProcessor = 0;
    std::uint32_t records = 0;
    std::uint32_t contexts = 0;  // of all processors together
    Totals totals;
    std::vector<ProcessorTotals> byProcessor;
    std::int64_t firstTime = 0;  // of the first event
    std::int64_t lastTime = 0;   // end of the recording
    std::string timeUnit;
    LossCounters losses;  // opening and decoding together

    const ProcessorTotals& Shown() const;
};

class DecodedRecording;

// Waits until everything is decoded.
Summary Summarize(const DecodedRecording& decoded);

}  // namespace kvx::service
