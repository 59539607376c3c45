#pragma once
// Which objects are locks.

#include <cstdint>
#include <vector>

#include "workbench/timing/CallFacts.h"
#include "workbench/timing/Contexts.h"

namespace kvx::timing {

struct LockInfo {
    bool isLock = false;
    bool inferred = false;        // a semaphore that is used like one
    ContextId atStart = kNobody;  // who holds it when the recording begins
};

// By object.
using LockSet = std::vector<LockInfo>;

}  // namespace kvx::timing
