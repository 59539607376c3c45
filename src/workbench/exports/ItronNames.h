#pragma once
// How an ITRON log names tasks and handlers.

#include <cstdint>
#include <string>

#include "workbench/service/ContextTable.h"

namespace kvx::exports {

// The number in the log: the context's own, where it fits into one.
std::uint32_t ItronNumber(const service::Context& context);

// "task 3", "int handler 5".
std::string ItronContext(const service::Context& context);

}  // namespace kvx::exports
