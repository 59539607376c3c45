#pragma once
// The resource file of a log: names, ids, priorities and the states at the start.

#include <string>

#include "workbench/simulation/KernelMoment.h"
#include "workbench/simulation/SimulatedKernel.h"

namespace kvx::simulation {

// The whole file (JSON) for a log of the kernel that begins at that moment; the default is the
// kernel's start.
std::string ResourceText(const SimulatedKernel& kernel, const KernelMoment& start = {});

}  // namespace kvx::simulation
