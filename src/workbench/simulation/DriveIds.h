#pragma once
// The numbers of the drive controller's tasks, interrupts and objects.

#include <cstdint>

#include "workbench/simulation/KernelMutex.h"

namespace kvx::simulation {

enum TaskId : std::int32_t {
    kSupervisor = 1,
    kMotorCtrl,
    kSensors,
    kCommRx,
    kCommTx,
    kCommand,
    kPathPlan,
    kDisplay,
    kLogger,
    kSelfTest,
    kStatistics
};

enum InterruptId : std::int32_t {
    kIntTimer = 1,
    kIntUartRx,
    kIntUartTx,
    kIntAdc,
    kIntImu,
    kIntI2c
};

enum ServiceRoutineId : std::int32_t { kIsrImu = 1 };
enum AlarmId : std::int32_t { kAlmFrame = 1 };
enum SemaphoreId : std::int32_t { kSemTelemetry = 1, kSemI2cDone, kSemTxDone };
enum EventFlagId : std::int32_t { kFlgFrame = 1, kFlgSensors };
enum DataQueueId : std::int32_t { kDtqUart = 1, kDtqPose };
enum MailboxId : std::int32_t { kMbxCommand = 1 };
enum MessageBufferId : std::int32_t { kMbfReply = 1, kMbfLog };
enum MutexId : std::int32_t { kMtxI2c = 1, kMtxFlash };
enum FixedPoolId : std::int32_t { kMpfFrame = 1 };
enum VariablePoolId : std::int32_t { kMplBuffer = 1 };
enum MessageId : std::int32_t { kMsgDeadline = 1 };

inline constexpr std::int32_t kBackgroundPriority = 14;

// The mutexes in the order of their ids.
struct MutexConfig {
    KernelMutex::Protocol protocol;
    std::int32_t ceiling = kLowestPriority;
};
inline constexpr MutexConfig kMutexes[] = {{KernelMutex::Protocol::Inherit},
                                           {KernelMutex::Protocol::Ceiling, 7}};

inline constexpr std::int32_t kLogText = 0x20003000;  // address of the texts for the log

}  // namespace kvx::simulation
