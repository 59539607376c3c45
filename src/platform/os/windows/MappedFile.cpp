#include "platform/os/MappedFile.h"

#include <windows.h>

#include "platform/os/windows/FileView.h"
#include "platform/os/windows/Wide.h"

namespace kvx::os {
namespace {

constexpr DWORD kAllMayUseIt = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

}  // namespace

// The system refuses to cut a file short that is mapped, so nothing of it can go.
std::optional<MappedFile> MappedFile::Open(const std::string& path, std::string& reason) {
    const std::wstring name = Wide(path);
    const DWORD attributes = GetFileAttributesW(name.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY)) {
        reason = "not a file";
        return std::nullopt;
    }
    const HANDLE file = CreateFileW(name.c_str(), GENERIC_READ, kAllMayUseIt, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        reason = ErrorText(GetLastError());
        return std::nullopt;
    }
    const auto view = ViewFile(file, reason);
    CloseHandle(file);
    if (!view) return std::nullopt;
    return MappedFile(view->data, view->size);
}

std::string MappedFile::MemoryPath() const {
    return {};
}

MappedFile::~MappedFile() {
    if (data_) UnmapViewOfFile(data_);
    if (memory_ != -1) CloseHandle(reinterpret_cast<HANDLE>(memory_));
}

}  // namespace kvx::os
