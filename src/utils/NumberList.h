#pragma once
// Lists of numbers as settings store them: "5,8,-1".

#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "platform/base/Types.h"

namespace kvx {

CString JoinNumbers(std::span<const int> numbers);
// Nothing unless the text is exactly so many decimal numbers, separated by commas.
std::optional<std::vector<int>> ParseNumbers(std::string_view text, std::size_t count);

}  // namespace kvx
