#pragma once
// A file in memory, written once and then read as others are.

#include <cstdint>
#include <string_view>

#include "platform/os/MappedFile.h"

namespace kvx::os {

class MemoryFile {
  public:
    MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    ~MemoryFile();

    // False: it does not fit.
    bool Append(std::string_view bytes);
    std::uint64_t Size() const { return size_; }
    // Ends writing; none: reason says why. The bytes live as long as the answer.
    std::optional<MappedFile> Map(std::string& reason);

  private:
    std::intptr_t file_ = -1;
    std::uint64_t size_ = 0;
};

}  // namespace kvx::os
