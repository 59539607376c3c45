#pragma once
// Message buffer: messages of different lengths are copied into it and out of it.

#include <deque>

#include "workbench/simulation/Scheduler.h"

namespace kvx::simulation {

class MessageBuffer : public KernelObject {
  public:
    // size: bytes of the buffer; each message takes four more than its own.
    explicit MessageBuffer(std::int32_t size) : size_(size), free_(size) {}

    // E_PAR: the message never fits.
    CallResult Send(Scheduler& scheduler, std::int32_t size, std::int32_t timeout);
    // ercd is the size of the message.
    CallResult Receive(Scheduler& scheduler, std::int32_t timeout);
    void WaiterLeft(Scheduler& scheduler) override;

  private:
    static std::int32_t Needed(std::int32_t size) { return (size + 3) / 4 * 4 + 4; }
    void Put(std::int32_t size);

    WaitQueue senders_{*this, WaitQueue::Order::Fifo};
    WaitQueue receivers_{*this, WaitQueue::Order::Fifo};
    const std::int32_t size_;
    std::int32_t free_;
    std::deque<std::int32_t> sizes_;
};

extern const ServiceOf<3> snd_mbf, psnd_mbf;
extern const ServiceOf<4> tsnd_mbf;
extern const ServiceOf<2> rcv_mbf, prcv_mbf;
extern const ServiceOf<3> trcv_mbf;

}  // namespace kvx::simulation
