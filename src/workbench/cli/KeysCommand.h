#pragma once
// kvxostrace keys: the keys of the windows as tables, for people and documents.

#include "workbench/cli/SubCommands.h"

namespace kvx::cli {

void AddKeys(CLI::App& app, const Streams& streams, int& status);

}  // namespace kvx::cli
