#pragma once
// A file in memory, written once and then read as others are.

#include <cstdint>
#include <string_view>

#include "workbench/formats/text/MappedFile.h"

namespace kvx::formats {

class MemoryFile {
  public:
    MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    ~MemoryFile();

    // False: it does not fit.
    bool Append(std::string_view bytes);
    std::uint64_t Size() const { return size_; }
    // Ends writing; the bytes live as long as the answer.
    Result<MappedFile> Map();

  private:
    int file_ = -1;
    std::uint64_t size_ = 0;
};

}  // namespace kvx::formats
