#pragma once
// A file's bytes, mapped for reading. Somebody may change or cut the file meanwhile: the bytes then
// change too, and those that are gone read as zeros.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvx::os {

class MappedFile {
  public:
    // None: reason says why, without the path. Folders, pipes and devices are refused.
    static std::optional<MappedFile> Open(const std::string& path, std::string& reason);

    MappedFile(MappedFile&& other) noexcept;
    MappedFile& operator=(MappedFile&& other) noexcept;
    ~MappedFile();

    std::string_view Text() const { return {static_cast<const char*>(data_), size_}; }
    // For a file in memory: the path by which other programs find it while this object lives;
    // empty for other files, and where the
    // system has no such path.
    std::string MemoryPath() const;

  private:
    friend class MemoryFile;
    // memory: what the system calls the file in memory, which the object owns; -1: it is none.
    MappedFile(void* data, std::size_t size, std::intptr_t memory = -1)
        : data_(data), size_(size), memory_(memory) {}

    void* data_ = nullptr;
    std::size_t size_ = 0;
    std::intptr_t memory_ = -1;
};

}  // namespace kvx::os
