#pragma once
// The sub-command `render`: a picture of a trace, without a display.

#include <string>

#include "workbench/cli/Streams.h"

namespace CLI {
class App;
}

namespace kvx::desktop {

// Adds it to app, as kvx::cli::AddSubCommand does. streams and status must outlive the parsing.
void AddRenderCommand(CLI::App& app, const cli::Streams& streams, int& status);

}  // namespace kvx::desktop
