#pragma once
// An explanation as a person would write it.

#include <optional>
#include <string>

#include "workbench/timing/Explanation.h"

namespace kvx::timing {

// "MOTOR_CTRL job 17 took 9.81 ms (deadline 5 ms): it ran 1.20 ms and was blocked 7.90 ms on
// semaphore 3 held by LOGGER, which itself stood ready for 6.10 ms while PATH_PLAN ran: priority
// inversion." What takes less than a twentieth of the time is left out.
std::string SentenceOf(const Model& model, const Explanation& explanation,
                       std::optional<std::int64_t> deadline);
// "MOTOR_CTRL job 17".
std::string JobName(const Model& model, ContextId context, std::uint32_t number);
// "semaphore 3"; for a wait without an object its cause.
std::string WaitName(const Model& model, ObjectId object, std::uint8_t cause);

}  // namespace kvx::timing
