#pragma once
// kvxostrace formats: what can be read and written.

#include "workbench/cli/SubCommands.h"

namespace kvx::cli {

void AddFormats(CLI::App& app, const Streams& streams, int& status);

}  // namespace kvx::cli
