#pragma once
// Recordings that systrace and atrace put into an HTML page.

#include <string_view>

namespace kvx::formats::ftrace {

// An HTML page in which a recording stands.
bool IsPage(std::string_view text);

// The lines of the recording; empty where the page has only the place for them.
std::string_view TextOfPage(std::string_view text);

}  // namespace kvx::formats::ftrace
