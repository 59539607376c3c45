#pragma once
// Modules as the system loads them. Handles and addresses are the system's; paths are UTF-8.

#include <string>
#include <string_view>

namespace kvx::os {

// How the names of modules end here.
extern const std::string_view kModuleSuffix;

// Null when it cannot be loaded: reason says why.
void* LoadModule(const std::string& path, std::string& reason);
bool UnloadModule(void* module);
// Null when the module exports no such name.
void* FindExport(void* module, const char* name);
// The path that the system loaded the module from, and that of the module that holds the address.
// Empty on failure.
std::string PathOfModule(void* module);
std::string PathOfAddress(const void* address);

}  // namespace kvx::os
