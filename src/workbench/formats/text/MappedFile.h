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

  private:
    MappedFile(void* data, std::size_t size) : data_(data), size_(size) {}

    void* data_ = nullptr;
    std::size_t size_ = 0;
};

}  // namespace kvx::formats
