#include "platform/os/Descriptors.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

namespace kvx::os {

int OpenForWriting(const std::string& path) {
    return open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
}

std::ptrdiff_t WriteBytes(int file, const char* data, std::size_t size) {
    return write(file, data, size);
}

bool CloseDescriptor(int file) {
    return close(file) == 0;
}

bool IsRegularFile(int file) {
    struct stat status {};
    return fstat(file, &status) == 0 && S_ISREG(status.st_mode);
}

bool IsTerminal(int file) {
    return isatty(file) != 0;
}

void PrepareStandardStreams() {
    std::signal(SIGPIPE, SIG_IGN);
    for (int fd = STDIN_FILENO; fd <= STDERR_FILENO; ++fd) {
        if (fcntl(fd, F_GETFD) != -1) continue;
        // In the wrong direction, so that using them fails.
        [[maybe_unused]] const int taken =
            open("/dev/null", fd == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

}  // namespace kvx::os
