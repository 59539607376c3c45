#pragma once
// For kernels that record neither when a task becomes ready nor that it has to wait: concludes both
// from what follows.

#include <cstdint>
#include <utility>
#include <vector>

#include "workbench/service/Recording.h"

namespace kvx::service {

struct Inferred {
    // Switched-out records after which the task waits for what is not recorded; ascending.
    std::vector<std::uint32_t> waits;
    // Record after which a task is ready, and the task; ascending by record.
    std::vector<std::pair<std::uint32_t, std::uint64_t>> ready;
};

// A task that is switched out without a blocking call, and does not run again before the idle state
// has run, must have been waiting: a ready task would have run instead. A task that waited becomes
// ready with the call of another context that released its object, otherwise in the last interrupt
// before it runs.
Inferred InferStates(Recording& recording);

}  // namespace kvx::service
