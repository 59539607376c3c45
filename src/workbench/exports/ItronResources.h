#pragma once
// The resource file beside an exported log: names, and what holds at the start of the range.

#include <ostream>
#include <string>

#include "workbench/exports/Exporter.h"

namespace kvx::exports {

inline constexpr const char* kItronKernel = "ITRON";

void WriteItronResources(const ExportRequest& request, std::ostream& out);

// What is added to times in the log: what was taken off those of the recording, if whoever opens
// the log takes the same off again.
std::int64_t ItronOrigin(const ExportRequest& request);

// A call's name as a word. That of another kernel stands in quotes where it is none.
std::string ItronCallName(const std::string& name, bool isItron);

}  // namespace kvx::exports
