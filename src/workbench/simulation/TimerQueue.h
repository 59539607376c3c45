#pragma once
// What is to happen at a tick of the kernel's clock.

#include <cstdint>
#include <vector>

namespace kvx::simulation {

struct Task;
struct TimedHandler;

// Belongs to a task that waits, or to a cyclic or alarm handler. Must not move while it runs.
struct Timer {
    Task* task = nullptr;
    TimedHandler* handler = nullptr;
    std::uint64_t due = 0;  // tick
};

class TimerQueue {
  public:
    std::uint64_t Now() const { return now_; }
    void Tick() { ++now_; }

    // timer expires at that tick; after those that were started before for the same tick. It must
    // not run yet.
    void StartAt(Timer& timer, std::uint64_t tick);
    // ... when that many whole milliseconds are over, by the ticks that have been counted.
    void StartAfter(Timer& timer, std::int32_t milliseconds) {
        StartAt(timer, now_ + static_cast<std::uint64_t>(milliseconds) + 1);
    }
    // Nothing happens to one that does not run.
    void Stop(Timer& timer);
    // The next one that is due, which then no longer runs; null: none is.
    Timer* TakeDue();

  private:
    std::uint64_t now_ = 0;
    std::vector<Timer*> timers_;  // the latest first
};

}  // namespace kvx::simulation
