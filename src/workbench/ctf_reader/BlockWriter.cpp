#include "workbench/ctf_reader/BlockWriter.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace kvx::ctf_reader {

bool BlockWriter::Flush() {
    if (!Send()) std::_Exit(EXIT_FAILURE);
    next_ = kHead;
    complete_ = kHead;
    return true;
}

void BlockWriter::Rescue() noexcept {
    Send();
    complete_ = kHead;
}

// Only what a signal handler may do. False: nobody reads any more.
bool BlockWriter::Send() noexcept {
    std::size_t left = complete_;
    const auto size = static_cast<std::uint32_t>(left - kHead);
    if (size == 0) return true;
    std::memcpy(block_.data(), &size, sizeof(size));
    const char* from = block_.data();
    while (left > 0) {
        const auto written = write(pipe_, from, left);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        from += written;
        left -= static_cast<std::size_t>(written);
    }
    return true;
}

}  // namespace kvx::ctf_reader
