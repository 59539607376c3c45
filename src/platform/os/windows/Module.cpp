#include "platform/os/Module.h"

#include <windows.h>

#include "platform/os/windows/Wide.h"

namespace kvx::os {

const std::string_view kModuleSuffix = ".dll";

void* LoadModule(const std::string& path, std::string& reason) {
    const HMODULE module =
        LoadLibraryExW(Wide(path).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (!module) reason = path + ": " + ErrorText(GetLastError());
    return module;
}

bool UnloadModule(void* module) {
    return FreeLibrary(static_cast<HMODULE>(module)) != 0;
}

void* FindExport(void* module, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
}

std::string PathOfModule(void* module) {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(static_cast<HMODULE>(module), path.data(),
                                   static_cast<DWORD>(path.size())));
    return Narrow(path);
}

std::string PathOfAddress(const void* address) {
    HMODULE module = nullptr;
    constexpr DWORD kHow =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (!GetModuleHandleExW(kHow, static_cast<const wchar_t*>(address), &module)) return {};
    return PathOfModule(module);
}

}  // namespace kvx::os
