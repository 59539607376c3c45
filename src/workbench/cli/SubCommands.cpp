#include "workbench/cli/SubCommands.h"

#include <CLI/CLI.hpp>
#include <array>

#include "platform/base/Resources.h"
#include "resources/Tables.h"
#include "workbench/cli/Analyze.h"
#include "workbench/cli/Check.h"
#include "workbench/cli/Compare.h"
#include "workbench/cli/Events.h"
#include "workbench/cli/Explain.h"
#include "workbench/cli/Export.h"
#include "workbench/cli/Formats.h"
#include "workbench/cli/GenerateCommand.h"
#include "workbench/cli/Info.h"
#include "workbench/cli/KeysCommand.h"

namespace kvx::cli {
namespace {

constexpr std::array<AddSubCommand, 10> kSubCommands = {
    &AddInfo,    &AddEvents, &AddAnalyze, &AddExplain,  &AddCheck,
    &AddCompare, &AddExport, &AddFormats, &AddGenerate, &AddKeys,
};

}  // namespace

void AddSubCommands(CLI::App& app, const Streams& streams, int& status) {
    SetResourceTable(&resources::Table());
    for (const auto add : kSubCommands) add(app, streams, status);
}

int RunSubCommand(int argc, const char* const* argv, const Streams& streams) {
    int status = kExitDone;
    CLI::App app("Recorded traces of real-time kernels", "kvxostrace");
    app.require_subcommand(1);
    try {
        AddSubCommands(app, streams, status);
        app.parse(argc, argv);
        return status;
    } catch (const CLI::ParseError& error) {
        const int code = app.exit(error, streams.out, streams.error);
        return code == 0 ? kExitDone : kExitUsage;
    } catch (const std::exception& error) {
        streams.error << "kvxostrace: " << error.what() << '\n';
        return kExitFailed;
    }
}

}  // namespace kvx::cli
