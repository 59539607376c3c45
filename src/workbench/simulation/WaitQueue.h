#pragma once
// Tasks that wait for an object of the kernel.

#include <vector>

#include "workbench/simulation/Context.h"

namespace kvx::simulation {

class Scheduler;

// Base of the objects on which tasks wait.
class KernelObject {
  public:
    KernelObject() = default;
    KernelObject(const KernelObject&) = delete;
    KernelObject& operator=(const KernelObject&) = delete;
    virtual ~KernelObject() = default;
    // A task waits for it no longer, and did not get what it waited for.
    virtual void WaiterLeft(Scheduler&) {}
};

class WaitQueue {
  public:
    enum class Order { Fifo, Priority };

    WaitQueue(KernelObject& object, Order order) : object_(object), order_(order) {}

    KernelObject& Object() const { return object_; }
    bool Empty() const { return tasks_.empty(); }
    Task* Front() const { return tasks_.empty() ? nullptr : tasks_.front(); }
    const std::vector<Task*>& Tasks() const { return tasks_; }
    void Insert(Task& task);
    void Remove(Task& task);

  private:
    KernelObject& object_;
    const Order order_;
    std::vector<Task*> tasks_;
};

}  // namespace kvx::simulation
