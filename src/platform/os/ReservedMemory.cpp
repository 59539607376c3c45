// What is the same on every system.

#include "platform/os/ReservedMemory.h"

#include <utility>

namespace kvx::os {

ReservedMemory::ReservedMemory(ReservedMemory&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)), bytes_(std::exchange(other.bytes_, 0)) {}

ReservedMemory& ReservedMemory::operator=(ReservedMemory&& other) noexcept {
    std::swap(data_, other.data_);
    std::swap(bytes_, other.bytes_);
    return *this;
}

}  // namespace kvx::os
