// kvxview: shows one recorded trace in the windows of the component. A host on the platform library
// alone.

#include <cstdio>
#include <string_view>

#include "hosting/ModuleFolder.h"
#include "platform/Backend.h"
#include "platform/base/SystemInfo.h"
#include "platform/base/WinApp.h"
#include "viewer/Viewer.h"

namespace {

constexpr const char* kUsage = "usage: kvxview [FILE]\n\nShows a recorded trace.\n";

int Show(const CString& file) {
    using kvx::viewer::Viewer;
    CWinApp application;
    Viewer viewer(kvx::viewer::UsersProfile());
    const CString failure = viewer.Start(kvx::hosting::ModuleFolder());
    if (!failure.empty()) {
        std::fprintf(stderr, "kvxview: %s\n", failure.c_str());
        return 1;
    }
    if (!file.empty()) viewer.Open(file);
    return application.Run();
}

}  // namespace

int main(int count, char** arguments) {
    const std::string_view first = count > 1 ? arguments[1] : "";
    if (first == "--version") return std::puts("kvxview " KVX_VERSION), 0;
    if (first == "--help") return std::fputs(kUsage, stdout), 0;
    if (count > 2 || first.starts_with("--")) return std::fputs(kUsage, stderr), 2;
    if (!kvx::InstallBackend())
        return std::fputs("kvxview: no window can be shown here\n", stderr), 1;
    RequireLightSysColors();
    const int status = Show(CString(first));
    kvx::RemoveBackend();
    return status;
}
