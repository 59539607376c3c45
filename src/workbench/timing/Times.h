#pragma once
// Times as people write them.

#include <cstdint>
#include <string>

#include "workbench/service/TraceClock.h"

namespace kvx::timing {

// "9.81 ms": three digits in the largest unit that is not above it; "981 counts" where the clock is
// not known.
std::string TimeText(std::int64_t count, const service::TraceClock& clock);
// "5 ms", "2.5 ms": exactly.
std::string ExactTimeText(std::int64_t count, const service::TraceClock& clock);

}  // namespace kvx::timing
