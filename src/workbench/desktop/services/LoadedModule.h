#pragma once
// The Workbench's own modules, which stand beside the program or, installed, in its library folder.

#include <QString>

namespace kvx::desktop {

struct LoadedModule {
    void* handle = nullptr;  // null: it could not be loaded, and error says why
    QString error;
};

// Loads lib<name>.so from the directory. Modules stay loaded until the program ends: the toolkit
// keeps references to what they registered with it.
LoadedModule LoadModule(const QString& directory, const char* name);

// The exported function, or null.
void* FindSymbol(void* module, const char* name);

// The directory of the modules: the program's own, or ../lib/kvxostrace from there.
QString ModuleDirectory();

}  // namespace kvx::desktop
