#pragma once
// The results of a check as build servers read them: a test case a rule, and one for each kind of
// finding that fails.

#include <ostream>
#include <string>
#include <vector>

#include "workbench/timing/Findings.h"

namespace kvx::cli {

void WriteJUnit(std::ostream& out, const std::string& recording, const timing::FindingList& list,
                const std::vector<timing::FindingKind>& failOn);

}  // namespace kvx::cli
