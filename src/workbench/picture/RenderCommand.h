#pragma once
// The sub-command `render`: a picture of a trace, without a display.

#include <optional>
#include <string>

#include "workbench/cli/OpenTrace.h"

namespace kvx::picture {

struct RenderOptions {
    cli::TraceOptions trace;
    std::string output;
    std::string table;  // empty: the chart
    std::string size;   // "1600x900"; empty: 1600 x 900, or the whole table
    std::string start;
    std::string end;
    int dpi = 96;
};

// Adds it to app, as kvx::cli::AddSubCommand does. streams and status must outlive the parsing.
void AddRenderCommand(CLI::App& app, const cli::Streams& streams, int& status);

// Makes its own application object, so it is called at most once and from main. Answers the exit
// status.
int RunRender(const RenderOptions& options, const cli::Streams& streams);

}  // namespace kvx::picture
