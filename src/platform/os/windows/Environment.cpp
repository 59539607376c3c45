#include "platform/os/Environment.h"

#include <lmcons.h>
#include <shlobj.h>
#include <windows.h>

#include "platform/os/Module.h"
#include "platform/os/windows/Wide.h"

namespace kvx::os {
namespace {

std::string UsersFolder(int which) {
    wchar_t folder[MAX_PATH];
    if (SHGetFolderPathW(nullptr, which, nullptr, 0, folder) != S_OK) return {};
    return Narrow(folder);
}

}  // namespace

std::string SystemFolder() {
    wchar_t folder[MAX_PATH];
    return Narrow({folder, GetWindowsDirectoryW(folder, MAX_PATH)});
}

std::string SystemLibraryFolder() {
    wchar_t folder[MAX_PATH];
    return Narrow({folder, GetSystemDirectoryW(folder, MAX_PATH)});
}

std::string UserName() {
    wchar_t name[UNLEN + 1];
    DWORD length = UNLEN + 1;
    return GetUserNameW(name, &length) && length > 0 ? Narrow({name, length - 1}) : std::string();
}

std::string HomeFolder() {
    return UsersFolder(CSIDL_PROFILE);
}

std::string UserDataFolder() {
    return UsersFolder(CSIDL_LOCAL_APPDATA);
}

std::string ProgramFile() {
    return PathOfModule(nullptr);
}

std::string FindInstalledProgram(const std::string& name) {
    wchar_t path[MAX_PATH];
    const DWORD length = SearchPathW(nullptr, Wide(name).c_str(), L".exe", MAX_PATH, path, nullptr);
    return length > 0 && length < MAX_PATH ? Narrow({path, length}) : std::string();
}

bool IsExecutable(const std::string& path) {
    DWORD kind = 0;
    return GetBinaryTypeW(Wide(path).c_str(), &kind) != 0;
}

std::string MakeTemporaryFolder() {
    wchar_t folder[MAX_PATH];
    wchar_t name[MAX_PATH];
    // The name is found as a file's, which gives way to the folder.
    if (!GetTempPathW(MAX_PATH, folder) || !GetTempFileNameW(folder, L"kvx", 0, name)) return {};
    DeleteFileW(name);
    return CreateDirectoryW(name, nullptr) ? Narrow(name) : std::string();
}

std::uint64_t PhysicalMemory() {
    MEMORYSTATUSEX memory = {};
    memory.dwLength = sizeof memory;
    GlobalMemoryStatusEx(&memory);
    return memory.ullTotalPhys;
}

std::tm LocalTime(std::time_t moment) {
    std::tm parts{};
    localtime_s(&parts, &moment);
    return parts;
}

std::tm UtcTime(std::time_t moment) {
    std::tm parts{};
    gmtime_s(&parts, &moment);
    return parts;
}

}  // namespace kvx::os
