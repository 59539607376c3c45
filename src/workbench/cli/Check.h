#pragma once
// kvxostrace check: findings, and whether a recording keeps to its rules.

#include <string>
#include <vector>

#include "workbench/cli/OpenTrace.h"
#include "workbench/cli/SubCommands.h"

namespace kvx::cli {

struct CheckOptions {
    TraceOptions trace;
    std::string rules;                // path; empty: none
    std::vector<std::string> failOn;  // kinds of findings
    std::string junit;                // path; empty: none
    bool json = false;
    bool suggest = false;
};

void AddCheck(CLI::App& app, const Streams& streams, int& status);
// Answers the exit status.
int RunCheck(const CheckOptions& options, const Streams& streams);

}  // namespace kvx::cli
