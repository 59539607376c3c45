#include "workbench/cli/StandardOutput.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace kvx::cli {
namespace {

// In the wrong direction, so that using them fails.
void TakeClosedDescriptors() {
    for (int fd = STDIN_FILENO; fd <= STDERR_FILENO; ++fd) {
        if (fcntl(fd, F_GETFD) != -1) continue;
        [[maybe_unused]] const int taken =
            open("/dev/null", fd == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

}  // namespace

StandardOutput::StandardOutput() : stream_(this) {
    TakeClosedDescriptors();
    std::signal(SIGPIPE, SIG_IGN);
    setp(kept_.data(), kept_.data() + kept_.size());
    stream_.exceptions(std::ios::badbit);
}

StandardOutput::int_type StandardOutput::overflow(int_type c) {
    sync();
    return traits_type::eq_int_type(c, traits_type::eof()) ? traits_type::not_eof(c)
                                                           : sputc(traits_type::to_char_type(c));
}

int StandardOutput::sync() {
    const char* from = pbase();
    while (from < pptr()) {
        const ssize_t written = write(STDOUT_FILENO, from, static_cast<std::size_t>(pptr() - from));
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) {
            setp(kept_.data(), kept_.data() + kept_.size());
            throw OutputFailure(errno);
        }
        from += written;
    }
    setp(kept_.data(), kept_.data() + kept_.size());
    return 0;
}

}  // namespace kvx::cli
