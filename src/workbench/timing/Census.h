#pragma once
// What has to be known of the whole recording before jobs and locks can be told.

#include <vector>

#include "workbench/timing/Walk.h"

namespace kvx::timing {

// Waits that end a job unless something else is said.
bool EndsJob(std::uint8_t cause);

struct Census {
    LockSet locks;
    // By context: the task enters a wait that ends a job, or becomes dormant, at least once.
    std::vector<char> showsEnds;
};

// A mutex is a lock. A semaphore is one if it is taken, if every give is by the task that took it,
// and if no second take comes before the give. A first give without a take is forgiven to a task
// that takes it later: it took it before the recording began.
Census TakeCensus(const Source& source);

}  // namespace kvx::timing
