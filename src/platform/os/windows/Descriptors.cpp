#include "platform/os/Descriptors.h"

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

#include "platform/os/windows/Wide.h"

namespace kvx::os {

int OpenForWriting(const std::string& path) {
    return _wopen(Wide(path).c_str(), _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY | _O_NOINHERIT,
                  _S_IREAD | _S_IWRITE);
}

std::ptrdiff_t WriteBytes(int file, const char* data, std::size_t size) {
    constexpr std::size_t kMost = std::size_t{1} << 30;
    const int written = _write(file, data, static_cast<unsigned>(std::min(size, kMost)));
    // A pipe that nobody reads any more is told as a bad argument.
    if (written < 0 && errno == EINVAL) errno = EPIPE;
    return written;
}

bool CloseDescriptor(int file) {
    return _close(file) == 0;
}

bool IsRegularFile(int file) {
    struct _stat64 status {};
    return _fstat64(file, &status) == 0 && (status.st_mode & _S_IFMT) == _S_IFREG;
}

bool IsTerminal(int file) {
    return _isatty(file) != 0;
}

void PrepareStandardStreams() {
    _setmode(kStandardOutput, _O_BINARY);
}

}  // namespace kvx::os
