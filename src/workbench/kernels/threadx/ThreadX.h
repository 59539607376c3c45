#pragma once
// ThreadX kernels: the events of their trace buffer, their calls, the states of their threads.

#include <cstdint>
#include <optional>
#include <string_view>

#include "workbench/service/Kernel.h"
#include "workbench/service/Record.h"

namespace kvx::kernels::threadx {

const service::Kernel& Kernel();

// Events that are no calls.
enum : std::uint32_t {
    kResume = 1,
    kSuspend,
    kInterruptEnter,
    kInterruptExit,
    kTimeSlice,
    kRunning,
    kRelinquish = 109,
    kPriorityChange = 108,
    kThreadCreate = 100,
};

// A call by the number of its event.
struct Call {
    std::string_view name;
    // Its up to four values, separated by blanks: name and form, "queue:o". Forms: o an object,
    // x hexadecimal, u decimal, w how long it waits. Empty names are left out.
    std::string_view values;
};
// None: the number has no name.
std::optional<Call> FindCall(std::uint32_t event);

// The states that a suspended thread can be in.
struct ThreadState {
    std::string_view name;  // "QUEUE"
    service::TaskState state;
    std::uint8_t waitCode;  // 0: it does not wait, or for what is not among the codes
};
ThreadState StateOf(std::uint32_t state);

}  // namespace kvx::kernels::threadx
