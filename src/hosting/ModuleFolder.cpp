#include "hosting/ModuleFolder.h"

#include <filesystem>

#include "platform/os/Environment.h"
#include "platform/os/Module.h"

namespace kvx::hosting {

namespace fs = std::filesystem;

CString ModuleFolder() {
    const fs::path program = fs::path(os::ProgramFile()).parent_path();
    std::error_code error;
    for (const char* prefix : {"lib", ""}) {
        const fs::path module = program / (prefix + ("KvxOSTrace" + CString(os::kModuleSuffix)));
        if (fs::exists(module, error)) return program.string();
    }
    return (program / "../lib/kvxostrace").lexically_normal().string();
}

}  // namespace kvx::hosting
