#pragma once
// What the simulated kernel records.

#include <cstdint>
#include <type_traits>

#include "workbench/simulation/Service.h"

namespace kvx::simulation {

using Time = std::int64_t;  // microseconds since the kernel started

enum class TraceKind : std::uint8_t {
    DispatchTo,    // id: the task
    DispatchFrom,  // id: the task
    TaskState,     // id: the task, state: its new state
    HandlerEnter,  // handler, id
    HandlerLeave,  // handler, id
    CallEnter,     // service, values: its arguments
    CallLeave,     // service, values: ercd, and what it hands out
    Message        // of the application; id: of the message, text, in which %d stands for values[0]
};

enum class HandlerKind : std::uint8_t { Interrupt, ServiceRoutine, Cyclic, Alarm };

enum class LoggedState : std::uint8_t { Dormant, Runnable, Waiting, Suspended, WaitingSuspended };

// Holds no memory of its own, so that a ring of records can keep it. service and text live as long
// as the program.
struct TraceRecord {
    Time time = 0;
    TraceKind kind = TraceKind::Message;
    HandlerKind handler = HandlerKind::Interrupt;
    LoggedState state = LoggedState::Dormant;
    std::int32_t id = 0;
    Arguments values{};
    const Service* service = nullptr;
    const char* text = nullptr;
};

static_assert(std::is_trivially_copyable_v<TraceRecord>);

class ITraceSink {
  public:
    virtual ~ITraceSink() = default;
    // Times never step back.
    virtual void Write(const TraceRecord& record) = 0;
};

}  // namespace kvx::simulation
