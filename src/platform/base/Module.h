#pragma once
// Loading of modules and looking up what they export.

#include "platform/base/Resources.h"
#include "platform/base/Types.h"

// Loads a module by path. A name that ends in ".dll" means the platform's own suffix; the file is
// tried under that name and with "lib" before it. Null when it cannot be loaded, with the reason.
HMODULE LoadLibrary(const CString& path, CString* error = nullptr);
bool FreeLibrary(HMODULE module);
// Null when the module exports no such name.
void* GetProcAddress(HMODULE module, const char* name);
template <class Function>
Function GetProcAddress(HMODULE module, const char* name) {
    return reinterpret_cast<Function>(GetProcAddress(module, name));
}
// Full path of a loaded module. Empty on failure.
CString GetModuleFileName(HMODULE module);
// Full path of the module that holds the address. Empty on failure.
CString GetModuleFileNameOf(const void* address);
