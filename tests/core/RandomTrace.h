#pragma once
// Small random traces with what real ones have: equal times, intervals of no length, contexts that
// never run, calls, states, several hatched contexts, gaps.

#include <random>

#include "support/ScriptedTrace.h"

namespace kvx::test {

struct RandomTraceShape {
    int contexts = 6;
    int events = 60;
    int longestStep = 5;  // of time; 0 is drawn as often as any other
    std::int64_t firstTime = 1;
    int hatchedOfTen = 2;
};

inline int Draw(std::mt19937& random, int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(random);
}

inline ScriptedTrace RandomTrace(std::mt19937& random, const RandomTraceShape& shape) {
    ScriptedTrace trace;
    for (int c = 0; c < shape.contexts; ++c) {
        const int type = Draw(random, 0, 9);
        if (type == 0)
            trace.AddUnknown();
        else if (type == 1)
            trace.AddIdle();
        else if (type == 2)
            trace.AddHandler(c, "INT" + std::to_string(c));
        else
            trace.AddTask(c + 1, "TASK" + std::to_string(Draw(random, 0, 99)));
        trace.contexts.back().hatched = Draw(random, 0, 9) < shape.hatchedOfTen;
        trace.contexts.back().shown = Draw(random, 0, 9) > 0;
    }
    const auto any = [&] {
        return static_cast<std::uint32_t>(Draw(random, 0, shape.contexts - 1));
    };
    std::uint32_t running = any();
    std::int64_t t = shape.firstTime;
    for (int e = 0; e < shape.events; ++e) {
        t += Draw(random, 0, shape.longestStep);
        const int kind = Draw(random, 1, 10);
        if (kind <= 4) {
            const std::uint32_t next = any();
            if (trace.contexts[next].type == kContextUnknown && Draw(random, 0, 1))
                trace.Gap(t, running, next);
            else
                trace.Dispatch(t, running, next);
            running = next;
        } else if (kind <= 7) {
            const int state = Draw(random, 0, 1) ? 1 : Draw(random, 1, 13);
            trace.State(t, any(), state, Draw(random, 0, 3));
        } else {
            const ScriptedTexts said{"call" + std::to_string(Draw(random, 0, 4)),
                                     "id=" + std::to_string(Draw(random, 0, 12)), "ercd=0"};
            trace.Call(t, any(), Draw(random, 0, 14), said);
        }
    }
    return trace;
}

}  // namespace kvx::test
