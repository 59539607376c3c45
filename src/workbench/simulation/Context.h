#pragma once
// What can run on the simulated processor: tasks, and handlers while they run.

#include <functional>
#include <string>
#include <vector>

#include "workbench/simulation/Program.h"
#include "workbench/simulation/TimerQueue.h"
#include "workbench/simulation/TraceSink.h"

namespace kvx::simulation {

class KernelMutex;
class WaitQueue;

using Body = std::function<Program()>;

inline constexpr std::int32_t kLowestPriority = 16;  // 1 is the highest

struct Context {
    Program program;
    std::int32_t remaining = 0;  // microseconds to compute before the program goes on
    CallResult result;           // of the call that it issued last
    std::int32_t variables = 0;  // address of its variables
};

struct TaskConfig {
    std::string name;
    std::string function;
    std::int32_t priority = kLowestPriority;
    bool active = true;  // runnable at the start, otherwise dormant
    std::int32_t stackSize = 1024;
    Body body;
};

// What a task waits for, and what the object needs to know of it.
struct Wait {
    WaitQueue* queue = nullptr;   // null: sleep or delay
    std::int32_t ercd = E_TMOUT;  // when the time is over
    std::int32_t data = 0;        // sent, or the pattern of flags
    std::int32_t size = 0;        // of a message or of memory, or the mode of waiting for flags
    KernelMutex* mutex = nullptr;
    bool sleep = false;  // for a wake-up
};

struct Task : Context {
    std::int32_t id = 0;
    TaskConfig config;
    LoggedState state = LoggedState::Dormant;
    std::int32_t basePriority = 0;
    std::int32_t priority = 0;     // the base priority, or a higher one that a mutex gives
    std::int32_t activations = 0;  // requests that are queued
    std::int32_t wakeups = 0;
    Wait wait;
    Timer timer;
    std::vector<KernelMutex*> held;

    bool IsWaiting() const {
        return state == LoggedState::Waiting || state == LoggedState::WaitingSuspended;
    }
};

// A handler as it is configured. id: unique among those of its kind.
struct Handler {
    HandlerKind kind = HandlerKind::Interrupt;
    std::int32_t id = 0;
    std::string name;
    Body body;
};

// A handler that runs or is interrupted.
struct HandlerContext : Context {
    const Handler* handler = nullptr;
    std::int32_t level = 0;
};

}  // namespace kvx::simulation
