#pragma once
// Who keeps whom: from a task that waits for a lock to the holder, to the holder of what that one
// waits for, and so on.

#include <vector>

#include "workbench/timing/Explanation.h"
#include "workbench/timing/PriorityTable.h"

namespace kvx::timing {

struct Chain {
    std::vector<HolderLink> links;
    bool deadlock = false;   // it leads back to the task or into itself
    bool inversion = false;  // its last holder, less urgent than the task, stands ready while a
                             // task outside that is less urgent too runs where it stands
};

// The task waits for an object.
Chain ChainOf(const Walk& walk, const PriorityTable& priorities, ContextId task);

}  // namespace kvx::timing
