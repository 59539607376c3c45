#pragma once
// The resource file of a log: names, ids, priorities and the states at the start.

#include <string>

#include "workbench/simulation/Kernel.h"
#include "workbench/simulation/KernelMoment.h"

namespace kvx::simulation {

// The whole file (JSON) for a log of the kernel that begins at that moment; the default is the
// kernel's start.
std::string ResourceText(const Kernel& kernel, const KernelMoment& start = {});

}  // namespace kvx::simulation
