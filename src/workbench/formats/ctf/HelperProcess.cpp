#include "workbench/formats/ctf/HelperProcess.h"

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

#include "platform/Text.h"

namespace kvx::formats::ctf {
namespace {

constexpr int kPatience = 100;  // milliseconds

}  // namespace

HelperProcess::HelperProcess(HelperProcess&& other) noexcept
    : process_(std::exchange(other.process_, -1)),
      pipe_(std::exchange(other.pipe_, -1)),
      atEnd_(other.atEnd_) {}

HelperProcess::~HelperProcess() {
    if (pipe_ >= 0) close(pipe_);
    if (process_ < 0) return;
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
}

std::size_t HelperProcess::Read(std::span<char> out) {
    pollfd ready{pipe_, POLLIN, 0};
    if (atEnd_ || poll(&ready, 1, kPatience) <= 0) return 0;
    const auto bytes = read(pipe_, out.data(), out.size());
    if (bytes < 0 && errno == EINTR) return 0;
    atEnd_ = bytes <= 0;
    return bytes > 0 ? static_cast<std::size_t>(bytes) : 0;
}

std::string HelperProcess::WhyEnded() {
    int status = 0;
    if (process_ < 0 || waitpid(process_, &status, 0) != process_) return {};
    process_ = -1;
    if (WIFSIGNALED(status)) {
        const int signal = WTERMSIG(status);
        if (signal == SIGPROF) return "the CTF library computed without an end and was stopped";
        return FormatText("the CTF library gave up (%s)", strsignal(signal));
    }
    return WEXITSTATUS(status) == 0
               ? std::string()
               : FormatText("the CTF library gave up (status %d)", WEXITSTATUS(status));
}

}  // namespace kvx::formats::ctf
