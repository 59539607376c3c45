#pragma once
// Follows the states of all tasks and shows those of the tasks that belong to one processor.

#include <cstdint>
#include <unordered_map>

#include "workbench/service/EventWriter.h"
#include "workbench/service/Task.h"

namespace kvx::service {

class TaskTracker {
  public:
    TaskTracker(std::uint32_t shownProcessor, ContextTable& contexts, EventWriter& writer)
        : shown_(shownProcessor), contexts_(contexts), writer_(writer) {}

    // The task; one that is new belongs to that processor.
    Task& Get(std::uint64_t id, std::uint32_t processor);
    bool Knows(std::uint64_t id) const { return tasks_.contains(id); }
    bool IsShown(const Task& task) const { return task.processor == shown_; }
    std::uint32_t ContextOf(Task& task);

    // Shows the new state, unless nothing changes. A running task that becomes ready runs on.
    void Set(Task& task, const Condition& condition);
    // The task runs there from now on; the dispatch that says so comes next.
    void Run(Task& task, std::uint32_t processor);
    // A task that leaves the shown processor is shown as dormant and paused from then on.
    void MoveTo(Task& task, std::uint32_t processor);
    // Shows the state again for a task that has come here.
    void Show(Task& task);

  private:
    void ShowState(Task& task, std::uint8_t code, std::uint8_t flags, std::uint32_t record);

    const std::uint32_t shown_;
    ContextTable& contexts_;
    EventWriter& writer_;
    std::unordered_map<std::uint64_t, Task> tasks_;
};

}  // namespace kvx::service
