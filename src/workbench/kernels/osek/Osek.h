#pragma once
// OSEK and AUTOSAR operating systems, and FreeRTOS, as BTF records both.
//
// The reader of BTF gives an event a name that says what it does to its process; here stands what
// that means.

#include "workbench/kernels/EventKernel.h"

namespace kvx::kernels::osek {

const EventKernel& Kernel();
// As its BTF writer records it: a task that does not run is ready or waits, nobody knows which.
const EventKernel& FreeRtos();

}  // namespace kvx::kernels::osek
