#pragma once
// What the decoder knows of one processor: the handlers that run nested on it, and what they
// interrupted.

#include <cstdint>
#include <vector>

#include "workbench/service/Task.h"

namespace kvx::service {

struct Handler {
    ContextKey key;
    CallStack calls;
};

struct Processor {
    std::uint32_t number = 0;
    Timeline* timeline = nullptr;  // null: not one of those that the recording names
    bool known = false;            // it is known what runs below the handlers
    Task* running = nullptr;       // null: the idle state, where it is known
    std::uint64_t last = 0;        // id of the task that ran last
    bool handlersSeen = false;
    std::vector<Handler> handlers;  // innermost last
    CallStack otherCalls;           // issued by what is not known, or by the idle state

    // The task that has the processor: below handlers or not, and not having given it up.
    Task* Occupant() const {
        const bool runs = running && running->condition.activity == Activity::Running;
        return runs && running->runsOn == number ? running : nullptr;
    }
    CallStack& Calls() {
        if (!handlers.empty()) return handlers.back().calls;
        return running ? running->calls : otherCalls;
    }
};

}  // namespace kvx::service
