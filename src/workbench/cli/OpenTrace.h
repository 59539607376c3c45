#pragma once
// Opens the trace that a sub-command is given, with the options that all of them share.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "workbench/cli/Streams.h"
#include "workbench/formats/OpenRecording.h"
#include "workbench/service/TraceService.h"

namespace CLI {
class App;
}

namespace kvx::cli {

// Which processors of a recording are meant: N or "all"; empty where the command decides.
class ProcessorChoice {
  public:
    ProcessorChoice() = default;
    // None: the text is neither.
    static std::optional<ProcessorChoice> Parse(const std::string& text);

    bool IsAll() const { return all_; }
    std::optional<std::uint32_t> Number() const { return number_; }
    bool IsGiven() const { return all_ || number_; }

  private:
    bool all_ = false;
    std::optional<std::uint32_t> number_;
};

struct TraceOptions {
    std::string path;
    formats::OpenOptions open;
    ProcessorChoice processors;
    bool strict = false;
};

// How a recording is read: --res, --calls, --descriptions, --frequency.
void AddOpenOptions(CLI::App& command, formats::OpenOptions& options);

// The file, or the files of one recording, how it is read, --cpu and --strict.
void AddTraceOptions(CLI::App& command, TraceOptions& options);
// The options alone.
void AddReadingOptions(CLI::App& command, TraceOptions& options);

// Opens the trace and shows the processor asked for, if one is. Warnings go to the error stream,
// progress there too where it is a terminal. Null: why is written there, and status is set.
std::unique_ptr<service::TraceService> OpenTrace(const TraceOptions& options,
                                                 const Streams& streams, int& status);

// The exit status after everything was written: kExitLosses with --strict where there are losses.
int FinalStatus(const TraceOptions& options, const service::LossCounters& losses,
                const Streams& streams);

}  // namespace kvx::cli
