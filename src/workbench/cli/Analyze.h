#pragma once
// kvxostrace analyze: run times, ready-to-run times and system calls of a range of a trace, from
// the same analyses as the window's.

#include <string>

#include "workbench/cli/OpenTrace.h"
#include "workbench/cli/SubCommands.h"

namespace kvx::cli {

struct AnalyzeOptions {
    TraceOptions trace;
    std::string table = "all";  // run-time, rdy-run, syscalls
    std::string start;          // empty: the first event
    std::string end;            // empty: the last event
    std::string sort;           // COLUMN or COLUMN:desc; empty: not sorted
    std::string task;           // of timing tables: name or number; empty: all
    std::string rules;          // of timing tables: path; empty: none
    std::string every;          // load: length of a slice
    std::string window;         // load: length of the stretch for the peak
    std::string csv;            // path, "-" for the output stream; empty: none
    bool json = false;
};

void AddAnalyze(CLI::App& app, const Streams& streams, int& status);
// Answers the exit status.
int RunAnalyze(const AnalyzeOptions& options, const Streams& streams);

}  // namespace kvx::cli
