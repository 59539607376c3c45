#include "platform/os/Module.h"

#include <dlfcn.h>
#include <link.h>

namespace kvx::os {

const std::string_view kModuleSuffix = ".so";

void* LoadModule(const std::string& path, std::string& reason) {
    void* const module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (module) return module;
    const char* const text = dlerror();
    reason = text ? text : "";
    return nullptr;
}

bool UnloadModule(void* module) {
    return dlclose(module) == 0;
}

void* FindExport(void* module, const char* name) {
    return dlsym(module, name);
}

std::string PathOfModule(void* module) {
    link_map* map = nullptr;
    return dlinfo(module, RTLD_DI_LINKMAP, &map) == 0 && map->l_name ? map->l_name : "";
}

std::string PathOfAddress(const void* address) {
    Dl_info info{};
    return dladdr(address, &info) != 0 && info.dli_fname ? info.dli_fname : "";
}

}  // namespace kvx::os
