#pragma once
// The Linux kernel, as LTTng and perf record it.

#include "workbench/kernels/EventKernel.h"

namespace kvx::kernels::linux_kernel {

const EventKernel& Kernel();

// False: not an event that says anything.
bool PlanEvent(const EventShape& shape, EventPlan& plan);

}  // namespace kvx::kernels::linux_kernel
