#pragma once
// Address space that is reserved at once and costs memory only where something was written. What
// lies in it never moves.

#include <cstddef>

namespace kvx::os {

class ReservedMemory {
  public:
    ReservedMemory() = default;
    // Throws std::bad_alloc when the system does not give that much address space.
    explicit ReservedMemory(std::size_t bytes);
    ReservedMemory(ReservedMemory&& other) noexcept;
    ReservedMemory& operator=(ReservedMemory&& other) noexcept;
    ~ReservedMemory();

    // Zeros where nothing was written; aligned to a page. Null when nothing is reserved.
    void* Data() const { return data_; }
    std::size_t Bytes() const { return bytes_; }

  private:
    void* data_ = nullptr;
    std::size_t bytes_ = 0;
};

}  // namespace kvx::os
