#pragma once
// Where a program of ours finds the modules that it loads.

#include "platform/base/Types.h"

namespace kvx::hosting {

// The program's own folder, or, installed, ../lib/kvxostrace from there.
CString ModuleFolder();

}  // namespace kvx::hosting
