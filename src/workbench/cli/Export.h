#pragma once
// kvxostrace export: a trace, or a range of it, in the form of other tools.

#include "workbench/cli/OpenTrace.h"
#include "workbench/cli/SubCommands.h"

namespace kvx::cli {

struct ExportOptions {
    TraceOptions trace;
    std::string to;
    std::string output = "-";
    std::string start;
    std::string end;
    bool arrows = false;
};

void AddExport(CLI::App& app, const Streams& streams, int& status);
// Answers the exit status.
int RunExport(const ExportOptions& options, const Streams& streams);

}  // namespace kvx::cli
