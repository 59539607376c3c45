#pragma once
// A synthetic trace of millions of events: periodic and bursty tasks over an idle context, nested
// handlers, waits and calls; some tasks run often, some once in a hundred thousand events.

#include <random>

#include "core/CoreFixture.h"

namespace kvx::bench {

inline test::ScriptedTrace LargeTrace(std::uint32_t events, int tasks = 36, int handlers = 3) {
    test::ScriptedTrace trace;
    std::mt19937 random(1);
    for (int h = 0; h < handlers; ++h) trace.AddHandler(h, "INT");
    for (int t = 0; t < tasks; ++t) trace.AddTask(t + 1, "TASK" + std::to_string(t));
    const std::uint32_t idle = trace.AddIdle();
    for (int n = 0; n < 64; ++n) {
        const std::string name = (n % 2 ? "twai_sem" : "snd_dtq") + std::to_string(n % 16);
        trace.texts.push_back({name, "id=" + std::to_string(n) + ", tmout=100", "ercd=0"});
    }
    const auto below = [&](std::uint32_t bound) {
        return static_cast<std::uint32_t>(random()) % bound;
    };
    // Task k runs about half as often as the one before it, down to one in a hundred thousand.
    const auto someTask = [&] {
        std::uint32_t k = 0;
        while (k + 1 < static_cast<std::uint32_t>(tasks) && below(100) < 70) ++k;
        return static_cast<std::uint32_t>(handlers + tasks - 1) - k;
    };
    std::uint32_t running = idle;
    for (std::int64_t t = 1000; trace.Count() < events; t += 1 + below(40)) {
        const std::uint32_t task = someTask();
        trace.State(t, task, 1);
        trace.Dispatch(t += below(5), running, task);
        running = task;
        for (std::uint32_t calls = below(3); calls > 0; --calls)
            trace.CallOf(t += below(9), task, static_cast<int>(1 + below(13)), below(64));
        if (below(10) == 0) {
            const std::uint32_t handler = below(static_cast<std::uint32_t>(handlers));
            trace.Dispatch(t += below(9), running, handler);
            trace.Dispatch(t += below(9), handler, running);
        }
        trace.State(t += below(9), task, static_cast<int>(3 + below(10)));
        if (below(2)) {
            trace.Dispatch(t += below(5), running, idle);
            running = idle;
        }
    }
    return trace;
}

// One for all benchmarks of a size.
inline test::Core& LargeCore(std::uint32_t events) {
    static std::map<std::uint32_t, std::unique_ptr<test::Core>> cores;
    auto& core = cores[events];
    if (!core) core = std::make_unique<test::Core>(LargeTrace(events));
    return *core;
}

}  // namespace kvx::bench
