#pragma once
// kvxostrace explain: why one job took as long as it did.

#include <cstdint>
#include <string>

#include "workbench/cli/OpenTrace.h"
#include "workbench/cli/SubCommands.h"

namespace kvx::cli {

struct ExplainOptions {
    TraceOptions trace;
    std::string task;         // name or number; empty: with `at`, whatever runs
    std::uint32_t job = 0;    // number; 0: not chosen
    std::uint32_t worst = 0;  // so many; 0: not asked for
    std::string at;           // time; empty: not chosen
    std::string rules;        // path; empty: none
    bool json = false;
};

void AddExplain(CLI::App& app, const Streams& streams, int& status);
// Answers the exit status.
int RunExplain(const ExplainOptions& options, const Streams& streams);

}  // namespace kvx::cli
