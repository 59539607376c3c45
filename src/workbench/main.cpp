// kvxostrace: the window, and the sub-commands of the command line.

#include <CLI/CLI.hpp>
#include <iostream>

#include "platform/os/Descriptors.h"
#include "workbench/cli/StandardOutput.h"
#include "workbench/cli/SubCommands.h"
#include "workbench/desktop/WindowCommand.h"
#include "workbench/picture/RenderCommand.h"

namespace {

int Run(int argc, const char* const* argv, const kvx::cli::Streams& streams) {
    CLI::App app(
        "Shows what a real-time kernel did: recorded traces of its tasks, handlers and "
        "system calls.",
        "kvxostrace");
    app.set_version_flag("--version", "kvxostrace " KVX_VERSION);
    app.require_subcommand(0, 1);
    std::vector<std::string> files;
    app.add_option("FILE", files,
                   "Trace to open in a window: a file, the files of one recording, or a CTF "
                   "folder; without one, a demonstration");
    kvx::desktop::PrepareToolkit();
    int status = kvx::cli::kExitDone;
    kvx::cli::AddSubCommands(app, streams, status);
    kvx::picture::AddRenderCommand(app, streams, status);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error, streams.out, streams.error) == 0 ? kvx::cli::kExitDone
                                                                : kvx::cli::kExitUsage;
    }
    if (!app.get_subcommands().empty()) return status;
    return kvx::desktop::RunWorkbench(files, streams);
}

}  // namespace

int main(int argc, char** argv) {
    kvx::cli::StandardOutput output;
    const kvx::cli::Streams streams{output.Stream(), std::cerr,
                                    kvx::os::IsTerminal(kvx::os::kStandardError)};
    try {
        const int status = Run(argc, argv, streams);
        output.Flush();
        return status;
    } catch (const kvx::cli::OutputFailure& failure) {
        if (failure.IsReaderGone()) return kvx::cli::kExitDone;
        std::cerr << "kvxostrace: " << failure.what() << "\n";
        return kvx::cli::kExitFailed;
    } catch (const std::exception& failure) {
        std::cerr << "kvxostrace: " << failure.what() << "\n";
        return kvx::cli::kExitFailed;
    }
}
