#pragma once
// A file that is read, mapped.

#include <string>

#include "platform/os/MappedFile.h"
#include "workbench/service/Result.h"

namespace kvx::formats {

using os::MappedFile;

// The error names the file and the reason; folders, pipes and devices are refused.
Result<MappedFile> MapFile(const std::string& path);

}  // namespace kvx::formats
