#pragma once
// Data queue: words that go from sender to receiver in order; a sender waits while it is full.

#include <deque>

#include "workbench/simulation/Scheduler.h"

namespace kvx::simulation {

class DataQueue : public KernelObject {
  public:
    // capacity 0: a sender and a receiver meet.
    explicit DataQueue(std::size_t capacity) : capacity_(capacity) {}

    CallResult Send(Scheduler& scheduler, std::int32_t data, std::int32_t timeout);
    CallResult Receive(Scheduler& scheduler, std::int32_t timeout);

  private:
    WaitQueue senders_{*this, WaitQueue::Order::Fifo};
    WaitQueue receivers_{*this, WaitQueue::Order::Fifo};
    const std::size_t capacity_;
    std::deque<std::int32_t> data_;
};

extern const ServiceOf<2> snd_dtq, psnd_dtq, ipsnd_dtq;
extern const ServiceOf<3> tsnd_dtq;
extern const ServiceOf<1> rcv_dtq, prcv_dtq;
extern const ServiceOf<2> trcv_dtq;

}  // namespace kvx::simulation
