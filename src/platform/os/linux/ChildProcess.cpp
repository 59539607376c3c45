#include "platform/os/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <ctime>
#include <utility>

namespace kvx::os {
namespace {

constexpr int kPatience = 100;  // milliseconds
constexpr std::size_t kMostErrors = 4096;
constexpr int kWorthReading = 64 << 10;
constexpr timespec kMoment = {0, 500'000};

// A program that writes little at a time is kept from its work by a reader that takes each piece as
// it comes: where little waits, more of it is given a moment to come.
void LetMoreCome(int pipe) {
    int waiting = 0;
    if (ioctl(pipe, FIONREAD, &waiting) == 0 && waiting < kWorthReading)
        nanosleep(&kMoment, nullptr);
}

}  // namespace

std::string ChildProcess::End::SignalText() const {
    return strsignal(signal);
}

bool ChildProcess::End::IsOutOfTime() const {
    return signal == SIGPROF;
}

ChildProcess::ChildProcess(ChildProcess&& other) noexcept
    : process_(std::exchange(other.process_, -1)),
      pipe_(std::exchange(other.pipe_, -1)),
      errorPipe_(std::exchange(other.errorPipe_, -1)),
      atEnd_(other.atEnd_),
      errors_(std::move(other.errors_)) {}

ChildProcess::~ChildProcess() {
    if (pipe_ >= 0) close(pipe_);
    if (errorPipe_ >= 0) close(errorPipe_);
    if (process_ < 0) return;
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
}

void ChildProcess::Limit(std::uint64_t seconds, std::uint64_t bytes) {
    const rlimit time{seconds, seconds};
    const rlimit memory{bytes, bytes};
    prlimit(process_, RLIMIT_CPU, &time, nullptr);
    prlimit(process_, RLIMIT_AS, &memory, nullptr);
}

std::size_t ChildProcess::Read(std::span<char> out) {
    std::array<pollfd, 2> ready = {{{pipe_, POLLIN, 0}, {errorPipe_, POLLIN, 0}}};
    if (atEnd_ || poll(ready.data(), ready.size(), kPatience) <= 0) return 0;
    if (ready[1].revents) ReadErrors();
    if (!ready[0].revents) return 0;
    if (!(ready[0].revents & POLLHUP)) LetMoreCome(pipe_);
    const auto bytes = read(pipe_, out.data(), out.size());
    if (bytes < 0 && errno == EINTR) return 0;
    atEnd_ = bytes <= 0;
    return bytes > 0 ? static_cast<std::size_t>(bytes) : 0;
}

// Takes all, so that the program never waits for it, and keeps the beginning.
void ChildProcess::ReadErrors() {
    std::array<char, kMostErrors> text;
    const auto bytes = read(errorPipe_, text.data(), text.size());
    if (bytes < 0 && (errno == EINTR || errno == EAGAIN)) return;
    if (bytes <= 0) {
        close(std::exchange(errorPipe_, -1));
        return;
    }
    const auto room = kMostErrors - errors_.size();
    errors_.append(text.data(), std::min(room, static_cast<std::size_t>(bytes)));
}

ChildProcess::End ChildProcess::Wait() {
    End end;
    if (process_ < 0) return end;
    if (!atEnd_) kill(process_, SIGKILL);  // it would wait for a reader for ever
    if (errorPipe_ >= 0) ReadErrors();
    int status = 0;
    const pid_t ended = waitpid(process_, &status, 0);
    if (std::exchange(process_, -1) != ended) return end;
    if (WIFSIGNALED(status)) end.signal = WTERMSIG(status);
    if (WIFEXITED(status)) end.status = WEXITSTATUS(status);
    return end;
}

}  // namespace kvx::os
