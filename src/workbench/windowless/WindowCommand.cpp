// The command line by itself, where the program is built without the toolkit of its window.

#include "workbench/desktop/WindowCommand.h"

namespace kvx::desktop {

void PrepareToolkit() {}

int RunWorkbench(const std::vector<std::string>& /*files*/, const cli::Streams& streams) {
    streams.error << "kvxostrace: this program is built without its window; "
                     "\"kvxostrace --help\" lists the commands\n";
    return cli::kExitUsage;
}

}  // namespace kvx::desktop
