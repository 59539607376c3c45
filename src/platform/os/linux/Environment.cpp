#include "platform/os/Environment.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <string_view>

namespace kvx::os {

std::string SystemFolder() {
    return "/usr";
}

std::string SystemLibraryFolder() {
    return "/usr/lib";
}

std::string UserName() {
    std::array<char, 4096> texts;
    passwd entry;
    passwd* found = nullptr;
    const int error = getpwuid_r(getuid(), &entry, texts.data(), texts.size(), &found);
    return error == 0 && found ? std::string(found->pw_name) : std::string();
}

std::string HomeFolder() {
    const char* const home = std::getenv("HOME");
    return home ? home : "";
}

std::string UserDataFolder() {
    if (const char* data = std::getenv("XDG_DATA_HOME"); data && *data == '/') return data;
    const std::string home = HomeFolder();
    return home.empty() ? std::string() : home + "/.local/share";
}

std::string ProgramFile() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

std::string FindInstalledProgram(const std::string& name) {
    const char* const set = std::getenv("PATH");
    std::string_view folders = set ? set : "/usr/bin:/bin";
    while (!folders.empty()) {
        const auto end = std::min(folders.find(':'), folders.size());
        const auto path = std::string(folders.substr(0, end)) + "/" + name;
        folders.remove_prefix(std::min(end + 1, folders.size()));
        if (path.front() == '/' && IsExecutable(path)) return path;
    }
    return {};
}

bool IsExecutable(const std::string& path) {
    return access(path.c_str(), X_OK) == 0;
}

std::string MakeTemporaryFolder() {
    std::error_code error;
    auto pattern = (std::filesystem::temp_directory_path(error) / "kvxostrace-XXXXXX").string();
    const char* const made = error ? nullptr : mkdtemp(pattern.data());
    return made ? made : "";
}

std::uint64_t PhysicalMemory() {
    const auto pages = static_cast<std::uint64_t>(std::max(sysconf(_SC_PHYS_PAGES), 1L));
    return pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

std::tm LocalTime(std::time_t moment) {
    std::tm parts{};
    localtime_r(&moment, &parts);
    return parts;
}

std::tm UtcTime(std::time_t moment) {
    std::tm parts{};
    gmtime_r(&moment, &parts);
    return parts;
}

}  // namespace kvx::os
