#pragma once
// The tables of jobs, waits and locks of `analyze`: of all processors, unless one is chosen.

#include <string>
#include <vector>

#include "workbench/cli/Analyze.h"

namespace kvx::cli {

// Their names.
std::vector<std::string> TimingTableNames();
// Answers the exit status. options.table is one of the names.
int RunTimingTable(const AnalyzeOptions& options, const Streams& streams);

}  // namespace kvx::cli
