#include "workbench/simulation/ReadyQueue.h"

#include <algorithm>
#include <bit>

namespace kvx::simulation {

Task* ReadyQueue::Front() const {
    return occupied_ ? levels_[static_cast<std::size_t>(std::countr_zero(occupied_))].front()
                     : nullptr;
}

void ReadyQueue::Append(Task& task) {
    Level(task.priority).push_back(&task);
    occupied_ |= 1u << task.priority;
}

void ReadyQueue::Prepend(Task& task) {
    auto& level = Level(task.priority);
    level.insert(level.begin(), &task);
    occupied_ |= 1u << task.priority;
}

void ReadyQueue::Remove(Task& task) {
    auto& level = Level(task.priority);
    std::erase(level, &task);
    if (level.empty()) occupied_ &= ~(1u << task.priority);
}

void ReadyQueue::Rotate(std::int32_t priority) {
    auto& level = Level(priority);
    if (level.size() > 1) std::rotate(level.begin(), level.begin() + 1, level.end());
}

}  // namespace kvx::simulation
