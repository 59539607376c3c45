// The drive controller's control loops.

#include "workbench/simulation/DriveController.h"
#include "workbench/simulation/DriveIds.h"
#include "workbench/simulation/SystemServices.h"
#include "workbench/simulation/TaskServices.h"

namespace kvx::simulation {
namespace {

constexpr std::int32_t kAdcDone = 1;
constexpr std::int32_t kImuDone = 2;
constexpr Time kFirstRelease = 3000;  // of MOTOR_CTRL: the first tick after the phase
constexpr Time kMotorPeriod = 10000;

}  // namespace

// Keeps the self test away from the processor for a while, and restarts the statistics.
Program DriveController::Supervise() {
    kernel_.Note(0, "Drive controller starts.");
    co_await ena_int(kIntUartRx);
    kernel_.RaiseAfter(kIntUartRx, Between(6000, 9000));
    for (std::int32_t period = 1;; ++period) {
        co_await slp_tsk();
        co_await ComputeFor(60, 110);
        if (period % 3 == 1) co_await sus_tsk(kSelfTest);
        if (period % 3 == 2) co_await rsm_tsk(kSelfTest);
        if (period % 16 == 15) co_await ter_tsk(kStatistics);
        if (period % 16 == 0) co_await act_tsk(kStatistics);
        co_await psnd_mbf(kMbfLog, kLogText, 20);
    }
}

Program DriveController::ControlMotor() {
    for (Time release = kFirstRelease;; release += kMotorPeriod) {
        co_await slp_tsk();
        co_await ComputeFor(350, 550);
        co_await wai_sem(kSemTelemetry);
        co_await ComputeFor(40, 70);
        co_await sig_sem(kSemTelemetry);
        co_await ComputeFor(80, 150);
        CheckDeadline(release);
    }
}

void DriveController::CheckDeadline(Time release) {
    const Time taken = Now() - release;
    if (taken <= kMotorPeriod) return;
    ++missedDeadlines_;
    kernel_.Note(kMsgDeadline, "deadline missed: MOTOR_CTRL done %d us after its release.",
                 static_cast<std::int32_t>(taken));
}

// Once in a while the inertial sensor does not answer in time.
Program DriveController::ReadSensors() {
    for (std::int32_t frame = 1;; ++frame) {
        co_await wai_flg(kFlgFrame, 1, TWF_ORW);
        co_await clr_flg(kFlgSensors, 0);
        co_await ComputeFor(60, 90);
        kernel_.RaiseAfter(kIntAdc, Between(150, 220));
        kernel_.RaiseAfter(kIntImu, Once(12) ? 3600 : Between(500, 900));
        const CallResult got = co_await twai_flg(kFlgSensors, kAdcDone | kImuDone, TWF_ANDW, 2);
        if (got.ercd == E_TMOUT) co_await psnd_mbf(kMbfLog, kLogText, 28);
        co_await loc_mtx(kMtxI2c);
        kernel_.RaiseAfter(kIntI2c, Between(250, 350));
        co_await twai_sem(kSemI2cDone, 5);
        co_await unl_mtx(kMtxI2c);
        co_await ComputeFor(700, 1200);
        co_await psnd_dtq(kDtqPose, Between(0, 99999));
        if (frame % 4 == 0) co_await act_tsk(kPathPlan);
    }
}

Program DriveController::PlanPath() {
    CallResult pose = co_await prcv_dtq(kDtqPose);
    for (; pose.ercd == E_OK; pose = co_await prcv_dtq(kDtqPose)) co_await ComputeFor(80, 140);
    for (std::int32_t step = Between(8, 12); step > 0; --step) co_await ComputeFor(900, 1100);
    co_await psnd_mbf(kMbfLog, kLogText, 24);
}

Program DriveController::OnMotorPeriod() {
    co_await iwup_tsk(kMotorCtrl);
}

Program DriveController::OnSensorPeriod() {
    co_await iset_flg(kFlgFrame, 1);
}

Program DriveController::OnSupervisorPeriod() {
    co_await iwup_tsk(kSupervisor);
}

Program DriveController::OnConversionDone() {
    co_await ComputeFor(3, 6);
    co_await iset_flg(kFlgSensors, kAdcDone);
}

Program DriveController::OnImuInterrupt() {
    co_await RunHandler{kernel_.ServiceRoutine(kIsrImu)};
}

Program DriveController::OnImuData() {
    co_await ComputeFor(8, 14);
    co_await iset_flg(kFlgSensors, kImuDone);
}

}  // namespace kvx::simulation
