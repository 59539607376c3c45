#pragma once
// An open file's bytes in the address space.

#include <cstddef>
#include <optional>
#include <string>

namespace kvx::os {

struct FileView {
    void* data = nullptr;  // null: the file is empty
    std::size_t size = 0;
};

// file: the system's handle, which may be closed afterwards. None: reason says why.
std::optional<FileView> ViewFile(void* file, std::string& reason);

}  // namespace kvx::os
