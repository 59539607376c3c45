#include "platform/base/Module.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string_view>

#include "platform/os/Module.h"

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kForeignSuffix = ".dll";

CString WithOwnSuffix(const CString& path) {
    if (!path.ends_with(kForeignSuffix)) return path;
    return path.substr(0, path.size() - kForeignSuffix.size()).append(kvx::os::kModuleSuffix);
}

// "dir/name.so" to "dir/libname.so".
CString WithPrefix(const CString& path) {
    const fs::path whole(path);
    return (whole.parent_path() / ("lib" + whole.filename().string())).string();
}

CString FullPath(const CString& path) {
    if (path.empty()) return {};
    std::error_code error;
    const fs::path full = fs::weakly_canonical(path, error);
    return error ? path : full.string();
}

}  // namespace

HMODULE LoadLibrary(const CString& path, CString* error) {
    const CString own = WithOwnSuffix(path);
    CString reason;
    for (const CString& name : std::array{own, WithPrefix(own)}) {
        CString why;
        if (void* module = kvx::os::LoadModule(name, why)) return static_cast<HMODULE>(module);
        // The reason that counts is that of the file that exists.
        std::error_code ignored;
        if (reason.empty() || fs::exists(name, ignored)) reason = why;
    }
    if (error) *error = reason;
    return nullptr;
}

bool FreeLibrary(HMODULE module) {
    return module && kvx::os::UnloadModule(module);
}

void* GetProcAddress(HMODULE module, const char* name) {
    return module ? kvx::os::FindExport(module, name) : nullptr;
}

CString GetModuleFileName(HMODULE module) {
    return module ? FullPath(kvx::os::PathOfModule(module)) : CString();
}

CString GetModuleFileNameOf(const void* address) {
    return FullPath(kvx::os::PathOfAddress(address));
}
