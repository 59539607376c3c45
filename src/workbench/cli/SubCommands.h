#pragma once
// The sub-commands of the command line: one registration line each in SubCommands.cpp.

#include "workbench/cli/Streams.h"

namespace CLI {
class App;
}

namespace kvx::cli {

// Adds one sub-command with its options to app. When the parser meets it, it runs and its exit
// status is stored in status; streams and status must outlive the parsing.
using AddSubCommand = void (*)(CLI::App& app, const Streams& streams, int& status);

// Adds all of them; their texts come from the tables of the resource library.
void AddSubCommands(CLI::App& app, const Streams& streams, int& status);

// The whole command line with a sub-command in it: parses, runs, answers the exit status. Help and
// wrong usage are handled here; no exception leaves.
int RunSubCommand(int argc, const char* const* argv, const Streams& streams);

}  // namespace kvx::cli
