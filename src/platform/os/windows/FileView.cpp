#include "platform/os/windows/FileView.h"

#include <windows.h>

#include "platform/os/windows/Wide.h"

namespace kvx::os {

std::optional<FileView> ViewFile(void* file, std::string& reason) {
    LARGE_INTEGER size = {};
    if (GetFileType(file) != FILE_TYPE_DISK || !GetFileSizeEx(file, &size)) {
        reason = "not a file";
        return std::nullopt;
    }
    if (size.QuadPart == 0) return FileView{};
    const HANDLE mapping = CreateFileMappingW(file, nullptr, PAGE_READONLY, 0, 0, nullptr);
    void* const data = mapping ? MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 0) : nullptr;
    if (!data) reason = ErrorText(GetLastError());
    if (mapping) CloseHandle(mapping);
    if (!data) return std::nullopt;
    return FileView{data, static_cast<std::size_t>(size.QuadPart)};
}

}  // namespace kvx::os
