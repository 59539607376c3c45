#pragma once
// Zephyr kernels, as their own CTF tracing and their SystemView port record them.

#include "workbench/kernels/EventKernel.h"
#include "workbench/kernels/SystemViewKernel.h"

namespace kvx::kernels::zephyr {

const EventKernel& Kernel();
const SystemViewKernel& KernelOfSystemView();

// False: not an event that says anything.
bool PlanEvent(const EventShape& shape, const EventNames& all, EventPlan& plan);

}  // namespace kvx::kernels::zephyr
