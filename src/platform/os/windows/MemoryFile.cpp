#include "platform/os/MemoryFile.h"

#include <windows.h>

#include <algorithm>
#include <utility>

#include "platform/os/windows/FileView.h"

namespace kvx::os {
namespace {

HANDLE HandleOf(std::intptr_t file) {
    return reinterpret_cast<HANDLE>(file);
}

// A file that the system keeps in memory while there is room, and deletes by itself.
HANDLE MakeTemporary() {
    wchar_t folder[MAX_PATH];
    wchar_t name[MAX_PATH];
    if (!GetTempPathW(MAX_PATH, folder) || !GetTempFileNameW(folder, L"kvx", 0, name))
        return INVALID_HANDLE_VALUE;
    return CreateFileW(name, GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                       FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
}

}  // namespace

MemoryFile::MemoryFile() : file_(reinterpret_cast<std::intptr_t>(MakeTemporary())) {}

MemoryFile::~MemoryFile() {
    if (file_ != -1) CloseHandle(HandleOf(file_));
}

bool MemoryFile::Append(std::string_view bytes) {
    constexpr std::size_t kMost = std::size_t{1} << 30;
    while (!bytes.empty()) {
        DWORD written = 0;
        const auto size = static_cast<DWORD>(std::min(bytes.size(), kMost));
        if (!WriteFile(HandleOf(file_), bytes.data(), size, &written, nullptr) || written == 0)
            return false;
        bytes.remove_prefix(written);
        size_ += written;
    }
    return true;
}

std::optional<MappedFile> MemoryFile::Map(std::string& reason) {
    const auto view = ViewFile(HandleOf(file_), reason);
    if (!view) return std::nullopt;
    return MappedFile(view->data, view->size, std::exchange(file_, -1));
}

}  // namespace kvx::os
