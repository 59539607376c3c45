#pragma once
// Codes of task states and of system-call classes, as the trace service gives them, and what people
// call them. The only place that numbers them.

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvx::host {

enum class StateCode : std::uint8_t {
    Ready = 1,
    Dormant,
    Sleeping,
    Delay,
    EventFlag,
    Semaphore,
    Mailbox,
    DataQueue,
    VariableDataQueue,
    FixedPool,
    MessageBuffer,
    Mutex,
    VariablePool,
};
inline constexpr int kStateCodes = 13;

enum class CallClass : std::uint8_t {
    TaskManagement = 1,
    TaskSynchronization,
    EventFlags,
    Semaphores,
    Mailboxes,
    DataQueues,
    MessageBuffers,
    Mutexes,
    MemoryManagement,
    InterruptManagement,
    TimerManagement,
    SystemManagement,
    Unknown,
};
inline constexpr int kCallClasses = 13;

// As events carry them.
constexpr std::uint8_t Code(StateCode code) {
    return static_cast<std::uint8_t>(code);
}
constexpr std::uint8_t Code(CallClass cls) {
    return static_cast<std::uint8_t>(cls);
}

// "RDY", "WAI (SEM)"; empty for a code outside 1 to 13.
constexpr const char* StateName(int code) {
    constexpr const char* kNames[] = {
        "RDY",       "DMT",       "WAI (SLP)", "WAI (DLY)",         "WAI (FLG)",
        "WAI (SEM)", "WAI (MBX)", "WAI (DTQ)", "WAI (VSDTQ,VRDTQ)", "WAI (MPF)",
        "WAI (MBF)", "WAI (MTX)", "WAI (MPL)"};
    return code < 1 || code > kStateCodes ? "" : kNames[static_cast<std::size_t>(code) - 1];
}

// The code of a name such as "WAI (SEM)"; 0: there is none of that name.
constexpr std::uint8_t StateCodeOf(std::string_view name) {
    for (int code = 1; code <= kStateCodes; ++code)
        if (name == StateName(code)) return static_cast<std::uint8_t>(code);
    return 0;
}

// "Semaphores"; that of an unknown class for a code outside 1 to 13.
constexpr const char* CallClassName(int code) {
    constexpr const char* kNames[] = {"Task management",
                                      "Task synchronization",
                                      "Event flags",
                                      "Semaphores",
                                      "Mailboxes",
                                      "Data Queues",
                                      "Message Buffers",
                                      "Mutexes",
                                      "Memory management",
                                      "Interrupt management",
                                      "Timer management",
                                      "System management",
                                      "Unknown"};
    return kNames[static_cast<std::size_t>(code < 1 || code > kCallClasses ? kCallClasses : code) -
                  1];
}

}  // namespace kvx::host
