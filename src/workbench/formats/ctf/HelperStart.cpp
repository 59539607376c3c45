// How the program that reads CTF is found and started.

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>

#include "platform/Text.h"
#include "workbench/formats/ctf/HelperProcess.h"
#include "workbench/formats/ctf/Wire.h"

namespace kvx::formats::ctf {
namespace {

constexpr int kPipeSize = 1 << 20;

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

class Spawn {
  public:
    Spawn() {
        posix_spawn_file_actions_init(&actions_);
        posix_spawnattr_init(&attributes_);
    }
    Spawn(const Spawn&) = delete;
    ~Spawn() {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }

    // 0, or the error.
    int Run(const std::string& path, std::vector<std::string> arguments, int output,
            pid_t& process) {
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
        posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
        // Whatever this process does with its signals is its own.
        sigset_t all;
        sigset_t none;
        sigfillset(&all);
        sigemptyset(&none);
        posix_spawnattr_setsigdefault(&attributes_, &all);
        posix_spawnattr_setsigmask(&attributes_, &none);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
        std::vector<char*> argv;
        for (auto& argument : arguments) argv.push_back(argument.data());
        argv.push_back(nullptr);
        return posix_spawn(&process, path.c_str(), &actions_, &attributes_, argv.data(), environ);
    }

  private:
    posix_spawn_file_actions_t actions_;
    posix_spawnattr_t attributes_;
};

}  // namespace

Result<HelperProcess> HelperProcess::Start(const std::vector<std::string>& folders, long seconds) {
    const auto path = FindProgram();
    if (path.empty())
        return Error{
            FormatText("the program \"%s\", which reads CTF, is not installed beside "
                       "this one",
                       wire::kProgram)};
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return Error{std::strerror(errno)};
    fcntl(ends[0], F_SETPIPE_SZ, kPipeSize);  // fewer changes between the two; no need
    std::vector<std::string> arguments = {path, std::to_string(seconds)};
    arguments.insert(arguments.end(), folders.begin(), folders.end());
    pid_t process = -1;
    const int error = Spawn().Run(path, std::move(arguments), ends[1], process);
    close(ends[1]);
    if (error == 0) return HelperProcess(process, ends[0]);
    close(ends[0]);
    return Error{path + ": " + std::strerror(error)};
}

}  // namespace kvx::formats::ctf
