// How the program that reads CTF is found and started.

#include <filesystem>

#include "platform/base/Text.h"
#include "platform/os/Environment.h"
#include "workbench/formats/ctf/HelperProcess.h"
#include "workbench/formats/ctf/Wire.h"

namespace kvx::formats::ctf {
namespace {

// Beside the running program, or, where that is installed, in the folder of its modules.
std::string FindProgram() {
    const auto folder = std::filesystem::path(os::ProgramFile()).parent_path();
    for (const auto& place : {folder, folder / "../lib/kvxostrace"}) {
        const auto path = (place / wire::kProgram).string();
        if (os::IsExecutable(path)) return path;
    }
    return {};
}

}  // namespace

Result<os::ChildProcess> StartHelper(const std::vector<std::string>& folders, long seconds) {
    const auto path = FindProgram();
    if (path.empty())
        return Error{
            FormatText("the program \"%s\", which reads CTF, is not installed beside "
                       "this one",
                       wire::kProgram)};
    std::vector<std::string> command = {path, std::to_string(seconds)};
    command.insert(command.end(), folders.begin(), folders.end());
    std::string reason;
    auto process = os::ChildProcess::Start(std::move(command), reason);
    if (!process) return Error{reason};
    return std::move(*process);
}

}  // namespace kvx::formats::ctf
