#pragma once
// The resource file of a log: names, ids, priorities and the states at the start.

#include <string>

#include "workbench/simulation/Kernel.h"

namespace kvx::simulation {

// The whole file (JSON) for a kernel as it is configured.
std::string ResourceText(const Kernel& kernel);

}  // namespace kvx::simulation
