#pragma once
// kvxostrace keys: the keys of the OS Trace window as a table, for people and documents.

#include "workbench/cli/SubCommands.h"

namespace kvx::cli {

void AddKeys(CLI::App& app, const Streams& streams, int& status);

}  // namespace kvx::cli
