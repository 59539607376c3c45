#pragma once
// The program without a sub-command: the window, or without a display a picture and a summary.

#include <string>
#include <vector>

#include "workbench/cli/Streams.h"

namespace kvx::desktop {

// Once, before a command that may use the toolkit.
void PrepareToolkit();

// files: of one recording, or a CTF folder; none: the built-in demonstration. Answers an exit
// status.
int RunWorkbench(const std::vector<std::string>& files, const cli::Streams& streams);

}  // namespace kvx::desktop
