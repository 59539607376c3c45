#pragma once
// Times as people write them in options and rules.

#include <cstdint>
#include <string_view>

#include "workbench/service/Result.h"
#include "workbench/service/TraceClock.h"

namespace kvx::service {

// The count that the text means: a bare whole number is a count; a number with a unit ("1.5ms",
// "200us", "3s", also min and h) is a time, which needs a clock that is known. Parts of a count are
// cut off. The error's message names the text.
Result<std::int64_t> ParseTime(std::string_view text, const TraceClock& clock);

}  // namespace kvx::service
