#pragma once
// Whether a recording keeps to its rules.

#include "workbench/timing/JobFindings.h"

namespace kvx::timing {

// Adds the violations, and a result for every rule.
void CheckRules(const Model& model, const Rules& rules, FindingList& out);

}  // namespace kvx::timing
