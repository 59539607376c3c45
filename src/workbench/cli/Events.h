#pragma once
// kvxostrace events: the decoded events as a table.

#include <cstdint>
#include <limits>

#include "workbench/cli/OpenTrace.h"
#include "workbench/cli/SubCommands.h"

namespace kvx::cli {

struct EventsOptions {
    TraceOptions trace;
    std::uint32_t from = 0;
    std::uint32_t count = std::numeric_limits<std::uint32_t>::max();
};

void AddEvents(CLI::App& app, const Streams& streams, int& status);
// Answers the exit status.
int RunEvents(const EventsOptions& options, const Streams& streams);

}  // namespace kvx::cli
