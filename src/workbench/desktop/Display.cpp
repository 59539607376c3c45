#include "workbench/desktop/Display.h"

#include <dlfcn.h>

#include <QDir>
#include <QLibraryInfo>

namespace kvx::desktop {
namespace {

struct Connection;

// The toolkit ends the program when it cannot connect, so this asks first, through the library that
// the toolkit itself connects with. The connection stays: a server may start anew when its last
// client leaves, and would then miss the toolkit.
bool DoesXServerAnswer() {
    void* library = dlopen("libxcb.so.1", RTLD_NOW | RTLD_LOCAL);
    if (!library) return false;
    using Connect = Connection* (*)(const char* display, int* screen);
    using HasError = int (*)(Connection*);
    const auto connect = reinterpret_cast<Connect>(dlsym(library, "xcb_connect"));
    const auto hasError = reinterpret_cast<HasError>(dlsym(library, "xcb_connection_has_error"));
    return connect && hasError && hasError(connect(nullptr, nullptr)) == 0;
}

bool IsWaylandUsable() {
    const QDir platforms(QLibraryInfo::path(QLibraryInfo::PluginsPath) + "/platforms");
    return !platforms.entryList({"libqwayland*"}, QDir::Files).isEmpty();
}

}  // namespace

bool IsDisplayThere() {
    if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) return true;
    if (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") && IsWaylandUsable()) return true;
    return !qEnvironmentVariableIsEmpty("DISPLAY") && DoesXServerAnswer();
}

}  // namespace kvx::desktop
