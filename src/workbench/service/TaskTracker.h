#pragma once
// Follows the states of all tasks and shows each on the processor that the task belongs to.

#include <cstdint>
#include <functional>
#include <unordered_map>
#include <vector>

#include "workbench/service/Task.h"

namespace kvx::service {

// The timeline of a processor; null where the recording does not know it.
using TimelineOf = std::function<Timeline*(std::uint32_t processor)>;

class TaskTracker {
  public:
    // moment is borrowed.
    TaskTracker(TimelineOf timelineOf, const Moment& moment)
        : timelineOf_(std::move(timelineOf)), moment_(moment) {}

    // The task; one that is new belongs to that processor.
    Task& Get(std::uint64_t id, std::uint32_t processor);
    bool Knows(std::uint64_t id) const { return tasks_.contains(id); }
    // The number of its context where it is.
    std::uint32_t ContextOf(Task& task);

    // Shows the new state, unless nothing changes. A running task that becomes ready runs on.
    void Set(Task& task, const Condition& condition);
    // The task runs there from now on; the dispatch that says so comes next.
    void Run(Task& task, std::uint32_t processor);
    // The processor that the task leaves shows it as dormant and paused from then on.
    void MoveTo(Task& task, std::uint32_t processor);
    // Nothing is known any more of any task but those that run on other processors. What was shown
    // of them ends with the next event of its timeline; answers those timelines.
    std::vector<Timeline*> ForgetAllOn(std::uint32_t processor);
    // Shows the state again for a task that has come to its processor.
    void Show(Task& task);

  private:
    void ShowState(Task& task, std::uint8_t code, std::uint8_t flags, std::uint32_t record);

    const TimelineOf timelineOf_;
    const Moment& moment_;
    std::unordered_map<std::uint64_t, Task> tasks_;
    std::vector<Task*> known_;  // of which something may be known
};

}  // namespace kvx::service
