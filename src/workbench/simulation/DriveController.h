#pragma once
// The simulated application: the controller of an electric drive.
//
// MOTOR_CTRL closes the control loop every 10 ms, SENSORS reads the sensors every 20 ms and
// starts PATH_PLAN, a long calculation, every fourth time. COMM_RX collects frames that a serial
// line delivers in bursts, COMMAND works on them and COMM_TX sends the replies. DISPLAY shares a
// bus with the sensors. LOGGER, of low priority, holds a semaphore that MOTOR_CTRL needs too: when
// PATH_PLAN starts at that moment, MOTOR_CTRL waits for both and misses its deadline.

#include "workbench/simulation/SimulatedKernel.h"

namespace kvx::simulation {

class DriveController {
  public:
    // sink is borrowed. Starts the kernel.
    DriveController(ITraceSink& sink, std::uint64_t seed);

    void Step() { kernel_.Step(); }
    Time Now() const { return kernel_.Now(); }
    const SimulatedKernel& GetKernel() const { return kernel_; }
    std::int32_t MissedDeadlines() const { return missedDeadlines_; }

  private:
    void AddObjects();
    void AddTasks();
    void AddTask(std::string name, std::string function, std::int32_t priority,
                 Program (DriveController::*program)(), bool active = true);
    void AddHandlers();
    void AddInterrupt(std::int32_t number, std::string name, std::int32_t level,
                      Program (DriveController::*program)());

    std::int32_t Between(std::int32_t low, std::int32_t high) {
        return kernel_.Chance().Between(low, high);
    }
    bool Once(std::int32_t times) { return kernel_.Chance().Once(times); }
    Compute ComputeFor(std::int32_t low, std::int32_t high) { return {Between(low, high)}; }

    // Control.
    Program Supervise();
    Program ControlMotor();
    Program ReadSensors();
    Program PlanPath();
    void CheckDeadline(Time release);
    Program OnMotorPeriod();
    Program OnSensorPeriod();
    Program OnSupervisorPeriod();
    Program OnConversionDone();
    Program OnImuInterrupt();
    Program OnImuData();

    // Communication.
    Program ReceiveFrames();
    Program ExecuteCommands();
    Program SendReplies();
    Program OnUartReceived();
    Program OnUartSent();
    Program OnFrameTimeout();
    std::int32_t NextUartWord();

    // What is not urgent.
    Program ShowStatus();
    Program WriteLog();
    Program TestMemory();
    Program CollectStatistics();
    Program OnI2cDone();
    Program OnRoundRobin();

    SimulatedKernel kernel_;
    std::int32_t missedDeadlines_ = 0;
    std::int32_t framesLeft_ = 0;  // of the burst on the serial line
    std::int32_t wordsLeft_ = 0;   // of the frame; 0: the next one starts
};

}  // namespace kvx::simulation
