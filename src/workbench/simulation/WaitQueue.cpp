#include "workbench/simulation/WaitQueue.h"

#include <algorithm>

namespace kvx::simulation {

void WaitQueue::Insert(Task& task) {
    const auto at = order_ == Order::Fifo
                        ? tasks_.end()
                        : std::ranges::upper_bound(tasks_, task.priority, {}, &Task::priority);
    tasks_.insert(at, &task);
}

void WaitQueue::Remove(Task& task) {
    std::erase(tasks_, &task);
}

}  // namespace kvx::simulation
