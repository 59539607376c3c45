#pragma once
// A rules file that a recording keeps to with a fifth to spare.

#include <string>

#include "workbench/timing/Model.h"

namespace kvx::timing {

// TOML. Tasks and handlers without a complete job are left out.
std::string SuggestRules(const Model& model);

}  // namespace kvx::timing
