#pragma once
// NuttX, whose trace writes its events under Linux's names.

#include "workbench/kernels/EventKernel.h"

namespace kvx::kernels::nuttx {

const EventKernel& Kernel();

}  // namespace kvx::kernels::nuttx
