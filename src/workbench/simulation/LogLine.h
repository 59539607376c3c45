#pragma once
// The ITRON text log, line by line.

#include <string_view>

#include "workbench/simulation/TraceSink.h"

namespace kvx::simulation {

// No line is longer, its end included.
inline constexpr std::size_t kLongestLine = 512;

// As the log and its resource file spell it.
std::string_view NameOf(LoggedState state);

// Writes the record's line at to, which has room for the longest one; the end of the line.
char* PutLogLine(const TraceRecord& record, char* to);

}  // namespace kvx::simulation
