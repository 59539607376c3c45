#pragma once
// Counting semaphore.

#include "workbench/simulation/Scheduler.h"

namespace kvx::simulation {

class Semaphore : public KernelObject {
  public:
    Semaphore(std::int32_t count, std::int32_t maximum,
              WaitQueue::Order order = WaitQueue::Order::Fifo)
        : queue_(*this, order), count_(count), maximum_(maximum) {}

    CallResult Signal(Scheduler& scheduler);
    CallResult Wait(Scheduler& scheduler, std::int32_t timeout);

  private:
    WaitQueue queue_;
    std::int32_t count_;
    const std::int32_t maximum_;
};

extern const ServiceOf<1> sig_sem, isig_sem, wai_sem, pol_sem;
extern const ServiceOf<2> twai_sem;

}  // namespace kvx::simulation
