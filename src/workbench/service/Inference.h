#pragma once
// For kernels that do not record everything of when a task waits and becomes ready: concludes it
// from what follows, a task and a wait at a time.

#include <cstdint>
#include <utility>
#include <vector>

#include "workbench/service/Recording.h"

namespace kvx::service {

// Why a task waits, where that is concluded from its calls.
struct WaitCause {
    std::uint32_t wait = 0;  // the record with which the wait begins
    std::uint32_t call = 0;
    std::uint8_t waitCode = 0;  // 0: the call is not known to wait for anything
    bool suspends = false;      // it is no wait: the task is suspended
    bool isLater = false;       // the call is recorded behind the wait
};

struct Inferred {
    // Records after which it is not known what the task that loses the processor does; ascending.
    std::vector<std::uint32_t> unknown;
    std::vector<WaitCause> causes;  // ascending by wait
    // Records with which a task loses the processor and waits, though none says so; ascending.
    std::vector<std::uint32_t> waits;
    // Record after which a task is ready, and the task; ascending by record.
    std::vector<std::pair<std::uint32_t, std::uint64_t>> ready;
};

// A wait that is recorded stands. A task that is switched out in a call that sleeps waits. One that
// is switched out otherwise must have been waiting if it is recorded as becoming ready before it
// runs again, or if the idle state runs before it does: a ready task would have run instead.
//
// Where no ready time is recorded, a task that waited became ready with the call of another context
// that released its object, otherwise in the last interrupt before it ran.
Inferred InferStates(Recording& recording);

}  // namespace kvx::service
