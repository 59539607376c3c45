#include "workbench/cli/Keys.h"

#include <CLI/CLI.hpp>

#include "traceview/model/KeyBindings.h"

namespace kvx::cli {
namespace {

void PrintKeys(std::ostream& out) {
    out << "| key | what it does |\n|---|---|\n";
    for (const KeyBinding& binding : KeyBindings()) {
        out << "| " << binding.keyText << " | " << binding.meaning << " |\n";
    }
}

}  // namespace

void AddKeys(CLI::App& app, const Streams& streams, int& status) {
    CLI::App* const command =
        app.add_subcommand("keys", "The keys of the OS Trace window, as a Markdown table");
    command->callback([&streams, &status] {
        PrintKeys(streams.out);
        status = kExitDone;
    });
}

}  // namespace kvx::cli
