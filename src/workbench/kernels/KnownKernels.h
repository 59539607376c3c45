#pragma once
// The kernels whose recordings describe their own events.

#include "workbench/kernels/EventKernel.h"

namespace kvx::kernels {

// The kernel that writes such events; null: none that is known.
const EventKernel* FindKernel(const EventNames& events);
// The kernel of that name, among all that there are; null: there is none.
const service::Kernel* FindKernelNamed(std::string_view name);
// What FindKernel looks for, for people: "thread_switched_in (Zephyr), ...".
std::string KnownSwitchEvents();

}  // namespace kvx::kernels
