#pragma once
// Memory pool of blocks of any size; the first gap that is large enough is taken.

#include <map>

#include "workbench/simulation/Scheduler.h"

namespace kvx::simulation {

class VariablePool : public KernelObject {
  public:
    VariablePool(std::int32_t address, std::int32_t size) : address_(address), size_(size) {}

    // E_PAR: larger than the pool.
    CallResult Get(Scheduler& scheduler, std::int32_t size, std::int32_t timeout);
    // E_PAR: block is none of the pool's.
    CallResult Return(Scheduler& scheduler, std::int32_t block);
    void WaiterLeft(Scheduler& scheduler) override;

  private:
    // The block's address; 0: there is no gap that is large enough.
    std::int32_t Allocate(std::int32_t size);

    WaitQueue queue_{*this, WaitQueue::Order::Fifo};
    const std::int32_t address_;
    const std::int32_t size_;
    std::map<std::int32_t, std::int32_t> blocks_;  // address and size of those that are taken
};

extern const ServiceOf<2> get_mpl, pget_mpl;
extern const ServiceOf<3> tget_mpl;
extern const ServiceOf<2> rel_mpl;

}  // namespace kvx::simulation
