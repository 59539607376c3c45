#pragma once
// The tasks that can run, by priority, and in each priority in the order in which they became
// ready.

#include <array>
#include <cstdint>
#include <vector>

#include "workbench/simulation/Context.h"

namespace kvx::simulation {

class ReadyQueue {
  public:
    // The first of the highest priority; null: there is none.
    Task* Front() const;
    void Append(Task& task);
    // Before the others of its priority.
    void Prepend(Task& task);
    // task must be in the queue, with the priority that it had when it was put there.
    void Remove(Task& task);
    // The first one of that priority goes behind the others.
    void Rotate(std::int32_t priority);

  private:
    std::vector<Task*>& Level(std::int32_t priority) {
        return levels_[static_cast<std::size_t>(priority)];
    }

    std::array<std::vector<Task*>, kLowestPriority + 1> levels_;
    std::uint32_t occupied_ = 0;  // bit n: there is a task of priority n
};

}  // namespace kvx::simulation
