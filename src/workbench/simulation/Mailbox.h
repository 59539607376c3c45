#pragma once
// Mailbox: addresses of messages that go from sender to receiver in order.

#include <deque>

#include "workbench/simulation/Scheduler.h"

namespace kvx::simulation {

class Mailbox : public KernelObject {
  public:
    CallResult Send(Scheduler& scheduler, std::int32_t message);
    CallResult Receive(Scheduler& scheduler, std::int32_t timeout);

  private:
    WaitQueue receivers_{*this, WaitQueue::Order::Fifo};
    std::deque<std::int32_t> messages_;
};

extern const ServiceOf<2> snd_mbx;
extern const ServiceOf<1> rcv_mbx, prcv_mbx;
extern const ServiceOf<2> trcv_mbx;

}  // namespace kvx::simulation
