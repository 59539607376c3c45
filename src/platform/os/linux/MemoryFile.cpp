#include "platform/os/MemoryFile.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

namespace kvx::os {

MemoryFile::MemoryFile() : file_(memfd_create("recording", MFD_CLOEXEC)) {}

MemoryFile::~MemoryFile() {
    if (file_ >= 0) close(static_cast<int>(file_));
}

bool MemoryFile::Append(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto written = write(static_cast<int>(file_), bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
        size_ += static_cast<std::uint64_t>(written);
    }
    return true;
}

std::optional<MappedFile> MemoryFile::Map(std::string& reason) {
    void* data = nullptr;
    if (size_ > 0) {
        data = mmap(nullptr, size_, PROT_READ, MAP_PRIVATE, static_cast<int>(file_), 0);
        if (data == MAP_FAILED) {
            reason = std::strerror(errno);
            return std::nullopt;
        }
    }
    return MappedFile(data, size_, std::exchange(file_, -1));
}

}  // namespace kvx::os
