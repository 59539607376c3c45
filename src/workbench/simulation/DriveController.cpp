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
    kernel_.Add<VariablePool>(0x20001400, 512);  // kMplBuffer
    for (const auto& [protocol, ceiling] : kMutexes) kernel_.Add<Mutex>(protocol, ceiling);
}

// In the order of their ids.
void DriveController::AddTasks() {
    AddTask("SUPERVISOR", "supervisor_main", 2, &DriveController::Supervise);
    AddTask("MOTOR_CTRL", "motor_ctrl_main", 3, &DriveController::ControlMotor);
    AddTask("SENSOR_FUSION", "sensor_fusion_main", 5, &DriveController::FuseSensors);
    AddTask("COMM_RX", "comm_rx_main", 6, &DriveController::ReceiveFrames);
    AddTask("COMM_TX", "comm_tx_main", 6, &DriveController::SendReplies);
    AddTask("COMMAND", "command_main", 7, &DriveController::ExecuteCommands);
    AddTask("PATH_PLANNER", "path_planner_main", 8, &DriveController::PlanPath, false);
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
    kernel_.AddTimerInterrupt(kIntTimer, "INH_INHNO_TIMER_target_timer_handler", 2);
    AddInterrupt(kIntUartRx, "INH_INHNO_UART_RX_uart_rx_handler", 3,
                 &DriveController::OnUartReceived);
    AddInterrupt(kIntUartTx, "INH_INHNO_UART_TX_uart_tx_handler", 3, &DriveController::OnUartSent);
    AddInterrupt(kIntAdc, "INH_INHNO_ADC_adc_eoc_handler", 4, &DriveController::OnConversionDone);
    AddInterrupt(kIntImu, "INH_INHNO_IMU__kernel_inthdr_5", 3, &DriveController::OnImuInterrupt);
    AddInterrupt(kIntI2c, "INH_INHNO_I2C_i2c_handler", 1, &DriveController::OnI2cDone);
    kernel_.AddServiceRoutine("ISR_INTNO_IMU_imu_isr", [this] { return OnImuData(); });
    kernel_.AddCyclic("CYC_MOTOR_10MS", 10, 2, [this] { return OnMotorPeriod(); });
    kernel_.AddCyclic("CYC_SENSOR_20MS", 20, 5, [this] { return OnSensorPeriod(); });
    kernel_.AddCyclic("CYC_SUPERVISOR_50MS", 50, 24, [this] { return OnSupervisorPeriod(); });
    kernel_.AddCyclic("CYC_ROUND_ROBIN_4MS", 4, 3, [this] { return OnRoundRobin(); });
    kernel_.AddAlarm("ALM_FRAME_TIMEOUT", [this] { return OnFrameTimeout(); });
}

void DriveController::AddInterrupt(std::int32_t number, std::string name, std::int32_t level,
                                   Program (DriveController::*program)()) {
    kernel_.AddInterrupt({.handler = {HandlerKind::Interrupt, number, std::move(name),
                                      [this, program] { return (this->*program)(); }},
                          .level = level});
}

}  // namespace kvx::simulation
