#pragma once
// kvxostrace info: a trace in numbers.

#include "workbench/cli/OpenTrace.h"
#include "workbench/cli/SubCommands.h"

namespace kvx::cli {

struct InfoOptions {
    TraceOptions trace;
    bool json = false;
};

void AddInfo(CLI::App& app, const Streams& streams, int& status);
// Answers the exit status.
int RunInfo(const InfoOptions& options, const Streams& streams);

}  // namespace kvx::cli
