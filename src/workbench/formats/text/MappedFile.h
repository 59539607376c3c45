#pragma once
// A file's bytes, mapped for reading. Somebody may change or cut the file meanwhile: the bytes then
// change too, and those that are gone read as zeros.

#include <cstddef>
#include <string>
#include <string_view>

#include "workbench/service/Result.h"

namespace kvx::formats {

class MappedFile {
  public:
    // The error names the file and the reason; folders, pipes and devices are refused.
    static Result<MappedFile> Open(const std::string& path);

    MappedFile(MappedFile&& other) noexcept;
    MappedFile& operator=(MappedFile&& other) noexcept;
    ~MappedFile();

    std::string_view Text() const { return {static_cast<const char*>(data_), size_}; }
    // For a file in memory: the path by which other programs find it while this object lives;
    // empty for other files.
    std::string MemoryPath() const;

  private:
    friend class MemoryFile;
    // memory: descriptor of the file in memory, which the object owns; -1: it is none.
    MappedFile(void* data, std::size_t size, int memory = -1)
        : data_(data), size_(size), memory_(memory) {}

    void* data_ = nullptr;
    std::size_t size_ = 0;
    int memory_ = -1;
};

}  // namespace kvx::formats
