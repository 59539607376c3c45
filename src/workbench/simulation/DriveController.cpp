#include "workbench/simulation/DriveController.h"

#include <utility>

#include "workbench/simulation/DriveIds.h"

namespace kvx::simulation {

DriveController::DriveController(ITraceSink& sink, std::uint64_t seed) : kernel_(sink, seed) {
    AddObjects();
    AddTasks();
    AddHandlers();
    kernel_.Start();
}

void DriveController::AddObjects() {
    kernel_.Add<Semaphore>(1, 1);                // kSemTelemetry
    kernel_.Add<Semaphore>(0, 1);                // kSemI2cDone
    kernel_.Add<Semaphore>(0, 1);                // kSemTxDone
    kernel_.Add<EventFlag>(true);                // kFlgFrame
    kernel_.Add<EventFlag>(true);                // kFlgSensors
    kernel_.Add<DataQueue>(16u);                 // kDtqUart
    kernel_.Add<DataQueue>(4u);                  // kDtqPose
    kernel_.Add<Mailbox>();                      // kMbxCommand
    kernel_.Add<MessageBuffer>(128);             // kMbfReply
    kernel_.Add<MessageBuffer>(128);             // kMbfLog
    kernel_.Add<FixedPool>(0x20001000, 2, 64);   // kMpfFrame
    kernel_.Add<VariablePool>(0x20001400, 448);  // kMplBuffer
    kernel_.AddMessage("DEADLINE");              // kMsgDeadline
    for (const auto& [protocol, ceiling] : kMutexes) kernel_.Add<KernelMutex>(protocol, ceiling);
}

// In the order of their ids.
void DriveController::AddTasks() {
    AddTask("SUPERVISOR", "supervisor_main", 2, &DriveController::Supervise);
    AddTask("MOTOR_CTRL", "motor_ctrl_main", 3, &DriveController::ControlMotor);
    AddTask("SENSORS", "sensors_main", 5, &DriveController::ReadSensors);
    AddTask("COMM_RX", "comm_rx_main", 6, &DriveController::ReceiveFrames);
    AddTask("COMM_TX", "comm_tx_main", 6, &DriveController::SendReplies);
    AddTask("COMMAND", "command_main", 7, &DriveController::ExecuteCommands);
    AddTask("PATH_PLAN", "path_plan_main", 8, &DriveController::PlanPath, false);
    AddTask("DISPLAY", "display_main", 10, &DriveController::ShowStatus);
    AddTask("LOGGER", "logger_main", 12, &DriveController::WriteLog);
    AddTask("SELF_TEST", "self_test_main", kBackgroundPriority, &DriveController::TestMemory);
    AddTask("STATISTICS", "statistics_main", kBackgroundPriority,
            &DriveController::CollectStatistics);
}

void DriveController::AddTask(std::string name, std::string function, std::int32_t priority,
                              Program (DriveController::*program)(), bool active) {
    kernel_.AddTask({.name = std::move(name),
                     .function = std::move(function),
                     .priority = priority,
                     .active = active,
                     .body = [this, program] { return (this->*program)(); }});
}

void DriveController::AddHandlers() {
    kernel_.AddTimerInterrupt(kIntTimer, "INH_TIMER", 2);
    AddInterrupt(kIntUartRx, "INH_UART_RX", 3, &DriveController::OnUartReceived);
    AddInterrupt(kIntUartTx, "INH_UART_TX", 3, &DriveController::OnUartSent);
    AddInterrupt(kIntAdc, "INH_ADC", 4, &DriveController::OnConversionDone);
    AddInterrupt(kIntImu, "INH_IMU", 3, &DriveController::OnImuInterrupt);
    AddInterrupt(kIntI2c, "INH_I2C", 1, &DriveController::OnI2cDone);
    kernel_.AddServiceRoutine("ISR_IMU", [this] { return OnImuData(); });
    kernel_.AddCyclic("CYC_10MS", 10, 2, [this] { return OnMotorPeriod(); });
    kernel_.AddCyclic("CYC_20MS", 20, 5, [this] { return OnSensorPeriod(); });
    kernel_.AddCyclic("CYC_50MS", 50, 24, [this] { return OnSupervisorPeriod(); });
    kernel_.AddCyclic("CYC_RROBIN", 8, 3, [this] { return OnRoundRobin(); });
    kernel_.AddAlarm("ALM_FRAME", [this] { return OnFrameTimeout(); });
}

void DriveController::AddInterrupt(std::int32_t number, std::string name, std::int32_t level,
                                   Program (DriveController::*program)()) {
    kernel_.AddInterrupt({.handler = {HandlerKind::Interrupt, number, std::move(name),
                                      [this, program] { return (this->*program)(); }},
                          .level = level});
}

}  // namespace kvx::simulation
