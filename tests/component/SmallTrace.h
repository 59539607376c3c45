#pragma once
// A trace of four contexts and a thousand events, for sessions.

#include "support/ScriptedTrace.h"

namespace kvx::test {

inline ScriptedTrace SmallTrace() {
    ScriptedTrace trace;
    const auto handler = trace.AddHandler(3, "timer", 0x1234);
    const auto control = trace.AddTask(1, "control");
    const auto logger = trace.AddTask(2, "logger");
    const auto idle = trace.AddIdle();
    trace.State(0, control, 1);
    trace.State(0, logger, 6);
    for (int i = 0; i < 200; ++i) {
        const std::int64_t t = i * 100;
        trace.Dispatch(t, idle, handler);
        trace.Dispatch(t + 10, handler, control);
        trace.Call(t + 15, control, 4, {"sig_sem", "semid=1", "ercd=0"});
        trace.State(t + 20, control, 4);
        trace.Dispatch(t + 20, control, logger);
        trace.Dispatch(t + 60, logger, idle);
    }
    return trace;
}

}  // namespace kvx::test
