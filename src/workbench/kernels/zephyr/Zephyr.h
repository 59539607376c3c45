#pragma once
// Zephyr kernels, as their own CTF tracing records them.

#include "workbench/kernels/EventKernel.h"

namespace kvx::kernels::zephyr {

const EventKernel& Kernel();

// False: not an event that says anything.
bool PlanEvent(const EventShape& shape, const EventNames& all, EventPlan& plan);

}  // namespace kvx::kernels::zephyr
