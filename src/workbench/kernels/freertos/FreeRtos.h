#pragma once
// FreeRTOS: its calls by name and by the numbers of its two SystemView ports. Most of its calls are
// recorded when they are over: one that waits comes behind its wait.

#include "workbench/kernels/SystemViewKernel.h"

namespace kvx::kernels::freertos {

const SystemViewKernel& Kernel();

}  // namespace kvx::kernels::freertos
