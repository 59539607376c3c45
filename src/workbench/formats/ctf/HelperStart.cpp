// How the program that reads CTF is found and started.

#include <unistd.h>

#include <filesystem>

#include "platform/base/Text.h"
#include "workbench/formats/ctf/HelperProcess.h"
#include "workbench/formats/ctf/Wire.h"

namespace kvx::formats::ctf {
namespace {

// Beside the running program, or, where that is installed, in the folder of its modules.
std::string FindProgram() {
    std::error_code error;
    const auto folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    for (const auto& place : {folder, folder / "../lib/kvxostrace"}) {
        const auto path = (place / wire::kProgram).string();
        if (access(path.c_str(), X_OK) == 0) return path;
    }
    return {};
}

}  // namespace

Result<ChildProcess> StartHelper(const std::vector<std::string>& folders, long seconds) {
    const auto path = FindProgram();
    if (path.empty())
        return Error{
            FormatText("the program \"%s\", which reads CTF, is not installed beside "
                       "this one",
                       wire::kProgram)};
    std::vector<std::string> command = {path, std::to_string(seconds)};
    command.insert(command.end(), folders.begin(), folders.end());
    return ChildProcess::Start(std::move(command));
}

}  // namespace kvx::formats::ctf
