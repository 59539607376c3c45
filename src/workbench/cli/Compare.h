#pragma once
// kvxostrace compare: what changed from one recording to another.

#include <string>

#include "workbench/cli/OpenTrace.h"
#include "workbench/cli/SubCommands.h"

namespace kvx::cli {

struct CompareOptions {
    TraceOptions old;
    std::string newPath;
    std::string rules;   // path; empty: none
    std::string failIf;  // condition; empty: none
    bool json = false;
};

void AddCompare(CLI::App& app, const Streams& streams, int& status);
// Answers the exit status.
int RunCompare(const CompareOptions& options, const Streams& streams);

}  // namespace kvx::cli
