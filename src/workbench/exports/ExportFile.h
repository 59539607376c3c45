#pragma once
// Writes an export into files.

#include <optional>
#include <string>

#include "workbench/exports/Exporter.h"
#include "workbench/service/Result.h"

namespace kvx::exports {

// Writes the file at path and, where the form has one, the second file beside it; what stood there
// is replaced when all is written. The error names the file and the reason, or says that progress
// stopped it; no file is changed then.
std::optional<Error> WriteFiles(const Exporter& exporter, const ExportRequest& request,
                                const std::string& path);

}  // namespace kvx::exports
