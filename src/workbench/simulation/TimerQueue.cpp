#include "workbench/simulation/TimerQueue.h"

#include <algorithm>

namespace kvx::simulation {

void TimerQueue::StartAt(Timer& timer, std::uint64_t tick) {
    timer.due = tick;
    const auto at = std::ranges::lower_bound(timers_, tick, std::ranges::greater(),
                                             [](const Timer* other) { return other->due; });
    timers_.insert(at, &timer);
}

void TimerQueue::Stop(Timer& timer) {
    std::erase(timers_, &timer);
}

Timer* TimerQueue::TakeDue() {
    if (timers_.empty() || timers_.back()->due > now_) return nullptr;
    Timer* timer = timers_.back();
    timers_.pop_back();
    return timer;
}

}  // namespace kvx::simulation
