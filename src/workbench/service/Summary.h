#pragma once
// A recording in numbers, for `info` and the window that shows losses.

#include <cstdint>
#include <string>
#include <vector>

#include "workbench/service/Loss.h"

namespace kvx::service {

struct Summary {
    std::string path;
    std::string format;
    std::vector<std::uint32_t> processors;
    std::uint32_t shownProcessor = 0;
    std::uint32_t records = 0;
    std::uint32_t contexts = 0;
    std::uint32_t events = 0;
    std::uint32_t dispatches = 0;
    std::uint32_t stateChanges = 0;
    std::uint32_t systemCalls = 0;
    std::int64_t firstTime = 0;  // of the first event
    std::int64_t lastTime = 0;   // end of the recording
    std::string timeUnit;
    LossCounters losses;  // opening and decoding together
};

}  // namespace kvx::service
