#include "workbench/simulation/FixedPool.h"

#include <algorithm>

#include "workbench/simulation/SimulatedKernel.h"

namespace kvx::simulation {

FixedPool::FixedPool(std::int32_t address, std::int32_t blocks, std::int32_t blockSize)
    : address_(address), blocks_(blocks), blockSize_(blockSize) {
    for (std::int32_t block = blocks; block-- > 0;) free_.push_back(address + block * blockSize);
}

CallResult FixedPool::Get(Scheduler& scheduler, std::int32_t timeout) {
    if (free_.empty()) return scheduler.Block(&queue_, timeout);
    const std::int32_t block = free_.back();
    free_.pop_back();
    return {E_OK, block};
}

CallResult FixedPool::Return(Scheduler& scheduler, std::int32_t block) {
    if (!IsGiven(block)) return {E_PAR};
    if (Task* const waiter = queue_.Front())
        scheduler.Release(*waiter, {E_OK, block});
    else
        free_.push_back(block);
    return {};
}

bool FixedPool::IsGiven(std::int32_t block) const {
    const std::int32_t offset = block - address_;
    return offset >= 0 && offset < blocks_ * blockSize_ && offset % blockSize_ == 0 &&
           std::ranges::find(free_, block) == free_.end();
}

namespace {

CallResult Get(SimulatedKernel& kernel, std::int32_t pool, std::int32_t timeout) {
    return kernel.Object<FixedPool>(pool).Get(kernel.Tasks(), timeout);
}

}  // namespace

constinit const ServiceOf<1> get_mpf(
    "get_mpf", "mpfid p_blk",
    [](SimulatedKernel& kernel, const Arguments& given) { return Get(kernel, given[0], TMO_FEVR); },
    "blk");
constinit const ServiceOf<1> pget_mpf(
    "pget_mpf", "mpfid p_blk",
    [](SimulatedKernel& kernel, const Arguments& given) { return Get(kernel, given[0], TMO_POL); },
    "blk");
constinit const ServiceOf<2> tget_mpf(
    "tget_mpf", "mpfid p_blk tmout",
    [](SimulatedKernel& kernel, const Arguments& given) { return Get(kernel, given[0], given[2]); },
    "blk");
constinit const ServiceOf<2> rel_mpf("rel_mpf", "mpfid blk",
                                     [](SimulatedKernel& kernel, const Arguments& given) {
                                         return kernel.Object<FixedPool>(given[0]).Return(
                                             kernel.Tasks(), given[1]);
                                     });

}  // namespace kvx::simulation
