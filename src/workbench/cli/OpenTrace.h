#pragma once
// Opens the trace that a sub-command is given, with the options that all of them share.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "workbench/cli/Streams.h"
#include "workbench/service/TraceService.h"

namespace CLI {
class App;
}

namespace kvx::cli {

struct TraceOptions {
    std::string path;
    std::string resourceFile;
    std::optional<std::uint32_t> processor;
    bool strict = false;
};

// The file and the options --cpu, --res and --strict.
void AddTraceOptions(CLI::App& command, TraceOptions& options);

// Opens the trace and shows the processor asked for. Warnings go to the error stream, progress
// there too where it is a terminal. Null: why is written there, and status is set.
std::unique_ptr<service::TraceService> OpenTrace(const TraceOptions& options,
                                                 const Streams& streams, int& status);

// The exit status after everything was written: kExitLosses with --strict where there are losses.
int FinalStatus(const TraceOptions& options, const service::LossCounters& losses,
                const Streams& streams);

}  // namespace kvx::cli
