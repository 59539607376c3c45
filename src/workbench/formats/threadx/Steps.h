#pragma once
// What the events of a ThreadX buffer do, one small thing after the other: the buffer names no
// dispatches, they follow from who is recorded next.

#include <cstdint>
#include <span>
#include <vector>

#include "workbench/formats/threadx/EventBuffer.h"

namespace kvx::formats::threadx {

inline constexpr std::uint32_t kNoStep = 0xFFFFFFFFu;

struct Step {
    enum class Kind : std::uint8_t {
        Nothing,
        Gap,
        Runs,    // who (a thread or kIdle) runs
        Enter,   // the interrupt of number who
        Leave,   // the innermost interrupt; who runs then, kInInterrupt where that is not told
        State,   // who is in the state that the source tells
        Switch,  // the same of the thread that runs; who runs then
        Call
    };
    std::uint32_t event = 0;   // at whose time
    std::uint32_t source = 0;  // whose values
    std::uint32_t who = 0;
    std::uint32_t cause = kNoStep;  // State and Switch: the call that waits
    Kind kind = Kind::Nothing;
};

// In order of time. Every event has at least one.
// events: all of the buffer.
std::vector<Step> StepsOf(const EventBuffer& buffer, std::span<const Event> events);

}  // namespace kvx::formats::threadx
