// What is the same on every system.

#include "platform/os/MappedFile.h"

#include <utility>

namespace kvx::os {

MappedFile::MappedFile(MappedFile&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)),
      size_(std::exchange(other.size_, 0)),
      memory_(std::exchange(other.memory_, -1)) {}

MappedFile& MappedFile::operator=(MappedFile&& other) noexcept {
    std::swap(data_, other.data_);
    std::swap(size_, other.size_);
    std::swap(memory_, other.memory_);
    return *this;
}

}  // namespace kvx::os
