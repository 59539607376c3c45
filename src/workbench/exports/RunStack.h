#pragma once
// What runs on a processor while its dispatches are walked through: a task or the idle state, and
// the handlers nested over it.

#include <cstdint>
#include <vector>

#include "workbench/service/Timeline.h"

namespace kvx::exports {

class RunStack {
  public:
    // As it is right before the events from time on. What ran at the start of the recording is the
    // context that the first dispatch takes the processor from.
    RunStack(const service::Timeline& timeline, std::int64_t time);

    enum class Move : std::uint8_t {
        Enter,   // a handler starts
        Leave,   // the innermost handler ends, and what it interrupted goes on
        Switch,  // a task, the idle state or nobody known runs; open handlers are over
    };
    Move Apply(std::uint32_t from, std::uint32_t to);

    // The task, the idle state, or the unidentified context; kNoContext: nothing is known.
    std::uint32_t Below() const { return below_; }
    const std::vector<std::uint32_t>& Handlers() const { return handlers_; }

  private:
    bool IsHandler(std::uint32_t context) const;

    const service::Timeline& timeline_;
    std::uint32_t below_ = service::kNoContext;
    std::vector<std::uint32_t> handlers_;  // innermost last
};

}  // namespace kvx::exports
