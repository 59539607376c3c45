#pragma once
// Whether a task that loses the processor is ready: a dispatch that makes it so is followed by the
// state that says it, of the same record.

#include "workbench/exports/Exporter.h"

namespace kvx::exports {

// dispatch is an event of the timeline that takes the processor from a task.
bool IsReadyAfter(const service::DecodedRecording& decoded, const service::Timeline& timeline,
                  std::uint32_t dispatch);

}  // namespace kvx::exports
