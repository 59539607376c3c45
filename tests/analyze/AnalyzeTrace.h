#pragma once
// A trace whose three tables are known: every period of 100 counts runs a handler for 10, the
// control task for 30, the logger for 40 and idle for 20; the control task makes one system call a
// period.

#include "support/ScriptedTrace.h"

namespace kvx::test {

inline constexpr std::uint32_t kTimerLine = 0;
inline constexpr std::uint32_t kControlLine = 1;
inline constexpr std::uint32_t kLoggerLine = 2;
inline constexpr std::uint32_t kIdleLine = 3;

inline ScriptedTrace AnalyzeTrace(int periods) {
    ScriptedTrace trace;
    const auto timer = trace.AddHandler(3, "timer", 0x1234);
    const auto control = trace.AddTask(1, "control");
    const auto logger = trace.AddTask(2, "logger");
    const auto idle = trace.AddIdle();
    trace.AddUnknown();
    for (int i = 0; i < periods; ++i) {
        const std::int64_t t = 100 + i * 100;
        const std::string semaphore = "semid=" + std::to_string(i % 7);
        trace.Dispatch(t, idle, timer);
        trace.State(t + 5, control, 1);
        trace.State(t + 6, logger, 1);
        trace.Dispatch(t + 10, timer, control);
        trace.Call(t + 25, control, 4, {i % 2 ? "wai_sem" : "sig_sem", semaphore, "ercd=0"});
        trace.Dispatch(t + 40, control, logger);
        trace.Dispatch(t + 80, logger, idle);
    }
    return trace;
}
// Events of a period: dispatch to the timer, two states, dispatch to control, call, dispatch to
// logger, dispatch to idle.
inline constexpr std::uint32_t kEventsPerPeriod = 7;
inline constexpr std::uint32_t kCallOfPeriod = 4;

}  // namespace kvx::test
