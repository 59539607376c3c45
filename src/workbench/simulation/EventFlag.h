#pragma once
// Event flag: a pattern of bits for which tasks wait.

#include "workbench/simulation/Scheduler.h"

namespace kvx::simulation {

inline constexpr std::int32_t TWF_ORW = 1;
inline constexpr std::int32_t TWF_ANDW = 2;

class EventFlag : public KernelObject {
  public:
    // clears: all bits are cleared when a task gets what it waited for.
    explicit EventFlag(bool clears) : queue_(*this, WaitQueue::Order::Fifo), clears_(clears) {}

    CallResult Set(Scheduler& scheduler, std::int32_t pattern);
    CallResult Clear(std::int32_t pattern);
    CallResult Wait(Scheduler& scheduler, std::int32_t pattern, std::int32_t mode,
                    std::int32_t timeout);

  private:
    bool Fits(std::int32_t pattern, std::int32_t mode) const;
    // The bits as a task gets them.
    CallResult Take();

    WaitQueue queue_;
    const bool clears_;
    std::int32_t bits_ = 0;
};

extern const ServiceOf<2> set_flg, iset_flg, clr_flg;
extern const ServiceOf<3> wai_flg, pol_flg;
extern const ServiceOf<4> twai_flg;

}  // namespace kvx::simulation
