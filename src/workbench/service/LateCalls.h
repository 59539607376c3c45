#pragma once
// For kernels that record a call that waits only when it is over: concludes from the calls that
// follow what tasks waited in, and, where the recording never says that a task waits at all, also
// that it did.

#include "workbench/service/Inference.h"

namespace kvx::service {

// A call that is recorded in front of what it does explains the wait that comes right behind it.
// Any other wait is that of the task's first call after it runs again, if that is one that waits.
//
// Where no wait is recorded: a task that lost the processor has been waiting since then if it is
// recorded as becoming ready before it runs again, or if the idle state ran on the only processor
// there is; it has been ready if it runs again without that. What it does at the end, or where a
// gap begins, is not known.
Inferred InferFromLateCalls(Recording& recording);

}  // namespace kvx::service
