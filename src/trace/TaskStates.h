#pragma once
// Codes of task states, of system-call classes and of tips, and the labels that name them.

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

enum class SysCallClass : int {
    kTaskManagement = 1,
    kTaskSynchronization = 2,
    kEventFlags = 3,
    kSemaphores = 4,
    kMailboxes = 5,
    kDataQueues = 6,
    kMessageBuffers = 7,
    kMutexes = 8,
    kMemoryManagement = 9,
    kInterruptManagement = 10,
    kTimerManagement = 11,
    kSystemManagement = 12,
    kUnknown = 13,
};
inline constexpr int kSysCallClasses = 13;

inline constexpr const char* kSuspendedLabel = "SUS";
inline constexpr const char* kPausedLabel = "PAUSE";
inline constexpr const char* kRunLabel = "RUN";

// "RDY", "WAI (SEM)" and so on; empty outside 1 to 13.
const char* TaskStateLabel(int state);
// "Task management" and so on; "Unknown" outside 1 to 12.
const char* SysCallClassLabel(int cls);
// "MCU Exe", "Task Stat", "System Call" for the event kinds 1 to 3; empty outside.
const char* TipKindLabel(int kind);

}  // namespace kvx
