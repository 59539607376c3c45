#pragma once
// Who runs after each event of a ThreadX buffer.

#include <cstdint>
#include <span>
#include <vector>

#include "workbench/formats/threadx/EventBuffer.h"

namespace kvx::formats::threadx {

// For each event a thread, kIdle, or kInInterrupt and kInitialising where that goes on.
//
// In a thread: a suspension and a relinquishment name who comes next; a resumption does where it
// preempts; everything else leaves the processor to the thread of the next event. Behind the
// outermost interrupt it is the next event's context that runs.
std::vector<std::uint32_t> NextContexts(std::span<const Event> events);

}  // namespace kvx::formats::threadx
