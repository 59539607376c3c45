// How a program is started.

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

#include "platform/os/ChildProcess.h"

namespace kvx::os {
namespace {

constexpr int kPipeSize = 1 << 20;

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
    int Run(std::vector<std::string>& command, int output, int errors, pid_t& process) {
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions_, errors, STDERR_FILENO);
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
        for (auto& argument : command) argv.push_back(argument.data());
        argv.push_back(nullptr);
        return posix_spawn(&process, command.front().c_str(), &actions_, &attributes_, argv.data(),
                           environ);
    }

  private:
    posix_spawn_file_actions_t actions_;
    posix_spawnattr_t attributes_;
};

// Both ends closed where nobody takes them.
class Pipe {
  public:
    Pipe() : open_(pipe2(ends_, O_CLOEXEC) == 0) {}
    Pipe(const Pipe&) = delete;
    ~Pipe() {
        for (const int end : ends_)
            if (end >= 0) close(end);
    }
    bool IsOpen() const { return open_; }
    int Reader() const { return ends_[0]; }
    int Writer() const { return ends_[1]; }
    int TakeReader() { return std::exchange(ends_[0], -1); }

  private:
    int ends_[2] = {-1, -1};
    bool open_;
};

}  // namespace

std::optional<ChildProcess> ChildProcess::Start(std::vector<std::string> command,
                                                std::string& reason) {
    Pipe output;
    Pipe errors;
    if (!output.IsOpen() || !errors.IsOpen()) {
        reason = std::strerror(errno);
        return std::nullopt;
    }
    fcntl(output.Reader(), F_SETPIPE_SZ, kPipeSize);  // fewer changes between the two; no need
    fcntl(errors.Reader(), F_SETFL, O_NONBLOCK);
    pid_t process = -1;
    const int error = Spawn().Run(command, output.Writer(), errors.Writer(), process);
    if (error != 0) {
        reason = command.front() + ": " + std::strerror(error);
        return std::nullopt;
    }
    return ChildProcess(process, output.TakeReader(), errors.TakeReader());
}

}  // namespace kvx::os
