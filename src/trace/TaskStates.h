#pragma once
// Codes of task states and of system-call classes, as the trace service gives them. The colour
// scheme names and colours them.

namespace kvx {

enum class TaskState : int {
    kReady = 1,
    kDormant = 2,
    kSleeping = 3,
    kDelay = 4,
    kEventFlag = 5,
    kSemaphore = 6,
    kMailbox = 7,
    kDataQueue = 8,
    kVariableDataQueue = 9,
    kFixedPool = 10,
    kMessageBuffer = 11,
    kMutex = 12,
    kVariablePool = 13,
};
inline constexpr int kTaskStates = 13;

// 1 task management, 2 task synchronisation, 3 event flags, 4 semaphores, 5 mailboxes, 6 data
// queues, 7 message buffers, 8 mutexes, 9 memory, 10 interrupts, 11 timers, 12 system, 13 unknown.
inline constexpr int kSysCallClasses = 13;

}  // namespace kvx
