#pragma once
// A guard in front of every JSON that is read: taking a deeply nested text apart costs a stack
// frame a level, and a file of brackets alone would end the program.

#include <string_view>

namespace kvx::formats {

inline constexpr int kDeepestJson = 64;

// Whether brackets and braces outside of strings nest deeper than that. The text may be anything.
bool IsNestedTooDeep(std::string_view json);

}  // namespace kvx::formats
