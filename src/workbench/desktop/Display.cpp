#include "workbench/desktop/Display.h"

#include <dlfcn.h>

#include <QDir>
#include <QLibraryInfo>

namespace kvx::desktop {
namespace {

struct Connection;

// The toolkit ends the program when it cannot connect, so this asks first, through the library that
// the toolkit itself connects with.
bool DoesXServerAnswer() {
    void* library = dlopen("libxcb.so.1", RTLD_NOW | RTLD_LOCAL);
    if (!library) return false;
    using Connect = Connection* (*)(const char* display, int* screen);
    using HasError = int (*)(Connection*);
    using Disconnect = void (*)(Connection*);
    const auto connect = reinterpret_cast<Connect>(dlsym(library, "xcb_connect"));
    const auto hasError = reinterpret_cast<HasError>(dlsym(library, "xcb_connection_has_error"));
    const auto disconnect = reinterpret_cast<Disconnect>(dlsym(library, "xcb_disconnect"));
    if (!connect || !hasError || !disconnect) return false;
    Connection* connection = connect(nullptr, nullptr);
    const bool answers = hasError(connection) == 0;
    disconnect(connection);
    return answers;
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
