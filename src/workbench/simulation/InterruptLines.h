#pragma once
// The interrupts of the simulated hardware.

#include <deque>
#include <limits>

#include "workbench/simulation/Context.h"

namespace kvx::simulation {

inline constexpr Time kNever = std::numeric_limits<Time>::max();

// Handlers of a higher level interrupt those of a lower one; tasks run at level 0.
inline constexpr std::int32_t kTaskLevel = 0;
inline constexpr std::int32_t kHighestLevel = std::numeric_limits<std::int32_t>::max();

struct InterruptLine {
    Handler handler;
    std::int32_t level = 1;
    Time due = kNever;  // when it is raised next; one that is not taken yet stays
    Time period = 0;    // 0: raised once
    bool enabled = true;
};

class InterruptLines {
  public:
    void Add(InterruptLine line) { lines_.push_back(std::move(line)); }
    InterruptLine& Line(std::int32_t number);
    const std::deque<InterruptLine>& Lines() const { return lines_; }

    // When the next one above that level is raised.
    Time NextDue(std::int32_t level) const;
    // The one of the highest level, above that one, that is raised by now; it is taken. Null: none.
    const InterruptLine* Take(Time now, std::int32_t level);

  private:
    std::deque<InterruptLine> lines_;
};

}  // namespace kvx::simulation
