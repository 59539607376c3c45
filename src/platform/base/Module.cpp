#include "platform/base/Module.h"

#include <dlfcn.h>
#include <link.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string_view>

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kForeignSuffix = ".dll";
constexpr std::string_view kOwnSuffix = ".so";

CString WithOwnSuffix(const CString& path) {
    if (!path.ends_with(kForeignSuffix)) return path;
    return path.substr(0, path.size() - kForeignSuffix.size()).append(kOwnSuffix);
}

// "dir/name.so" to "dir/libname.so".
CString WithPrefix(const CString& path) {
    const fs::path whole(path);
    return (whole.parent_path() / ("lib" + whole.filename().string())).string();
}

CString FullPath(const char* path) {
    if (!path || !*path) return {};
    std::error_code error;
    const fs::path full = fs::weakly_canonical(path, error);
    return error ? CString(path) : full.string();
}

}  // namespace

HMODULE LoadLibrary(const CString& path, CString* error) {
    const CString own = WithOwnSuffix(path);
    CString reason;
    for (const CString& name : std::array{own, WithPrefix(own)}) {
        if (void* module = dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL))
            return static_cast<HMODULE>(module);
        // The reason that counts is that of the file that exists.
        const char* text = dlerror();
        std::error_code ignored;
        if (reason.empty() || fs::exists(name, ignored)) reason = text ? text : "";
    }
    if (error) *error = reason;
    return nullptr;
}

bool FreeLibrary(HMODULE module) {
    return module && dlclose(module) == 0;
}

void* GetProcAddress(HMODULE module, const char* name) {
    return module ? dlsym(module, name) : nullptr;
}

CString GetModuleFileName(HMODULE module) {
    link_map* map = nullptr;
    if (!module || dlinfo(module, RTLD_DI_LINKMAP, &map) != 0) return {};
    return FullPath(map->l_name);
}

CString GetModuleFileNameOf(const void* address) {
    Dl_info info{};
    if (dladdr(address, &info) == 0) return {};
    return FullPath(info.dli_fname);
}
