#pragma once
// The program without a sub-command: the window, or without a display a picture and a summary.

#include <string>

#include "workbench/cli/Streams.h"

namespace kvx::desktop {

// Once, before a command that may use the toolkit.
void PrepareToolkit();

// file: a trace file or CTF folder; empty: the built-in demonstration. Answers an exit status.
int RunWorkbench(const std::string& file, const cli::Streams& streams);

}  // namespace kvx::desktop
