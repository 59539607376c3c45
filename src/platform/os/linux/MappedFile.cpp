#include "platform/os/MappedFile.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "platform/os/linux/MappingGuard.h"

namespace kvx::os {

std::optional<MappedFile> MappedFile::Open(const std::string& path, std::string& reason) {
    const auto failed = [&](const char* why) {
        reason = why;
        return std::nullopt;
    };
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0) return failed(std::strerror(errno));
    struct stat status = {};
    void* data = nullptr;
    int error = fstat(file, &status) == 0 ? 0 : errno;
    const bool regular = S_ISREG(status.st_mode);
    const auto size = static_cast<std::size_t>(status.st_size);
    if (!error && regular && size > 0) {
        data = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
        if (data == MAP_FAILED) error = errno;
    }
    close(file);
    if (error) return failed(std::strerror(error));
    if (!regular) return failed("not a file");
    if (size > 0) {
        madvise(data, size, MADV_SEQUENTIAL);
        GuardMapping(data, size);
    }
    return MappedFile(data, size);
}

std::string MappedFile::MemoryPath() const {
    if (memory_ < 0) return {};
    return "/proc/" + std::to_string(getpid()) + "/fd/" + std::to_string(memory_);
}

MappedFile::~MappedFile() {
    if (memory_ >= 0) close(static_cast<int>(memory_));
    if (!data_) return;
    if (memory_ < 0) UnguardMapping(data_);
    munmap(data_, size_);
}

}  // namespace kvx::os
