#pragma once
// A mutex, with or without a protection against priority inversion.

#include "workbench/simulation/Scheduler.h"

namespace kvx::simulation {

class KernelMutex : public KernelObject {
  public:
    enum class Protocol {
        None,
        Inherit,  // the owner has at least the priority of those that wait
        Ceiling   // the owner has at least the priority of the ceiling
    };

    explicit KernelMutex(Protocol protocol, std::int32_t ceiling = kLowestPriority)
        : queue_(*this, WaitQueue::Order::Priority), protocol_(protocol), ceiling_(ceiling) {}

    CallResult Lock(Scheduler& scheduler, std::int32_t timeout);
    CallResult Unlock(Scheduler& scheduler);
    // The owner loses it, and the first that waits gets it.
    void GiveUp(Scheduler& scheduler);
    void WaiterLeft(Scheduler& scheduler) override;

    // The priority that a task has now: its own, or the highest that its mutexes give it. Sets it,
    // and that of those who hold what it waits for.
    static void UpdatePriority(Scheduler& scheduler, Task& task);

  private:
    void Take(Scheduler& scheduler, Task& task);
    std::int32_t PriorityOfOwner() const;

    WaitQueue queue_;
    const Protocol protocol_;
    const std::int32_t ceiling_;
    Task* owner_ = nullptr;
};

extern const ServiceOf<1> loc_mtx, ploc_mtx, unl_mtx;
extern const ServiceOf<2> tloc_mtx;

}  // namespace kvx::simulation
