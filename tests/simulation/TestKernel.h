#pragma once
// A kernel whose tasks are written in the tests, and what it records.

#include <functional>
#include <string>
#include <vector>

#include "workbench/simulation/LogLine.h"
#include "workbench/simulation/SimulatedKernel.h"
#include "workbench/simulation/SystemServices.h"
#include "workbench/simulation/TaskServices.h"

namespace kvx::simulation {

class TestKernel : private ITraceSink {
  public:
    static constexpr std::int32_t kTimer = 1;  // interrupt of the clock, level 2

    TestKernel() { kernel.AddTimerInterrupt(kTimer, "TIMER", 2); }

    std::int32_t Task(std::int32_t priority, Body body, bool active = true) {
        return kernel.AddTask({.name = "",
                               .function = "",
                               .priority = priority,
                               .active = active,
                               .body = std::move(body)});
    }
    void Interrupt(std::int32_t number, std::int32_t level, Body body) {
        kernel.AddInterrupt(
            {.handler = {HandlerKind::Interrupt, number, "", std::move(body)}, .level = level});
    }
    void Run(Time until = 100000) {
        kernel.Start();
        while (kernel.Now() < until && kernel.Step()) continue;
    }

    // What a program did, in order.
    void Did(const std::string& step) { steps.push_back(step); }
    void Got(const std::string& who, const CallResult& result) {
        Did(who + " " + std::to_string(result.ercd));
    }
    // The recorded lines without their times, those of the clock left out.
    std::vector<std::string> lines;
    std::vector<std::string> steps;
    SimulatedKernel kernel{*this, 1};

  private:
    void Write(const TraceRecord& record) override {
        char line[kLongestLine];
        const std::string text(line, PutLogLine(record, line) - 1);
        if (text.find("int handler 1.") == std::string::npos)
            lines.push_back(text.substr(text.find(' ') + 1));
    }
};

}  // namespace kvx::simulation
