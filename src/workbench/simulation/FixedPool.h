#pragma once
// Memory pool of blocks of one size.

#include <vector>

#include "workbench/simulation/Scheduler.h"

namespace kvx::simulation {

class FixedPool : public KernelObject {
  public:
    FixedPool(std::int32_t address, std::int32_t blocks, std::int32_t blockSize);

    CallResult Get(Scheduler& scheduler, std::int32_t timeout);
    // E_PAR: block is none of the pool's that a task has.
    CallResult Return(Scheduler& scheduler, std::int32_t block);

  private:
    bool IsGiven(std::int32_t block) const;

    WaitQueue queue_{*this, WaitQueue::Order::Fifo};
    const std::int32_t address_;
    const std::int32_t blocks_;
    const std::int32_t blockSize_;
    std::vector<std::int32_t> free_;
};

extern const ServiceOf<1> get_mpf, pget_mpf;
extern const ServiceOf<2> tget_mpf, rel_mpf;

}  // namespace kvx::simulation
