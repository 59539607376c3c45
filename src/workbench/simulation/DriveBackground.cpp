// What the drive controller does while nothing is urgent.

#include "workbench/simulation/DriveController.h"
#include "workbench/simulation/DriveIds.h"
#include "workbench/simulation/SystemServices.h"
#include "workbench/simulation/TaskServices.h"

namespace kvx::simulation {

Program DriveController::ShowStatus() {
    for (;;) {
        co_await dly_tsk(Between(21, 29));
        const CallResult buffer = co_await get_mpl(kMplBuffer, Between(280, 440));
        co_await ComputeFor(400, 900);
        co_await loc_mtx(kMtxI2c);
        for (std::int32_t part = 0; part < 3; ++part) {
            co_await ComputeFor(120, 260);
            kernel_.RaiseAfter(kIntI2c, Between(400, 600));
            co_await wai_sem(kSemI2cDone);
        }
        co_await unl_mtx(kMtxI2c);
        co_await rel_mpl(kMplBuffer, buffer.value);
    }
}

// Adds the telemetry, which it shares with MOTOR_CTRL, to every line.
Program DriveController::WriteLog() {
    for (;;) {
        co_await trcv_mbf(kMbfLog, kLogText, 8);
        co_await ComputeFor(150, 350);
        co_await wai_sem(kSemTelemetry);
        co_await ComputeFor(700, 1300);
        co_await sig_sem(kSemTelemetry);
        co_await loc_mtx(kMtxFlash);
        co_await ComputeFor(120, 240);
        co_await unl_mtx(kMtxFlash);
        co_await dly_tsk(Between(3, 6));
    }
}

Program DriveController::TestMemory() {
    for (;;) {
        for (std::int32_t bank = 0; bank < 3; ++bank) {
            co_await ComputeFor(350, 600);
            co_await loc_cpu();
            co_await ComputeFor(6, 12);
            co_await unl_cpu();
        }
        co_await dly_tsk(Between(9, 14));
    }
}

Program DriveController::CollectStatistics() {
    for (;;) {
        co_await tslp_tsk(Between(14, 22));
        co_await get_tim();
        co_await dis_int(kIntUartTx);
        co_await ComputeFor(20, 40);
        co_await ena_int(kIntUartTx);
        co_await ComputeFor(1200, 2400);
        co_await snd_mbf(kMbfLog, kLogText, 48);
    }
}

Program DriveController::OnI2cDone() {
    co_await ComputeFor(3, 6);
    co_await isig_sem(kSemI2cDone);
}

Program DriveController::OnRoundRobin() {
    co_await irot_rdq(kBackgroundPriority);
}

}  // namespace kvx::simulation
