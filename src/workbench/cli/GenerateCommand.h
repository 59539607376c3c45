#pragma once
// The sub-command `generate`: a log of a simulated kernel.

#include "workbench/cli/SubCommands.h"

namespace kvx::cli {

// An AddSubCommand.
void AddGenerate(CLI::App& app, const Streams& streams, int& status);

}  // namespace kvx::cli
