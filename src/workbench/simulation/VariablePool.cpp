#include "workbench/simulation/VariablePool.h"

#include "workbench/simulation/SimulatedKernel.h"

namespace kvx::simulation {

std::int32_t VariablePool::Allocate(std::int32_t size) {
    const std::int32_t needed = (size + 7) / 8 * 8;
    std::int32_t gap = address_;
    for (const auto& [block, taken] : blocks_) {
        if (block - gap >= needed) break;
        gap = block + taken;
    }
    if (address_ + size_ - gap < needed) return 0;
    blocks_.emplace(gap, needed);
    return gap;
}

CallResult VariablePool::Get(Scheduler& scheduler, std::int32_t size, std::int32_t timeout) {
    if (size <= 0 || size > size_) return {E_PAR};
    const std::int32_t block = queue_.Empty() ? Allocate(size) : 0;
    if (block == 0) return scheduler.Block(&queue_, timeout, {.size = size});
    return {E_OK, block};
}

CallResult VariablePool::Return(Scheduler& scheduler, std::int32_t block) {
    if (blocks_.erase(block) == 0) return {E_PAR};
    WaiterLeft(scheduler);
    return {};
}

// Those that wait get their blocks, in order, as far as there is room.
void VariablePool::WaiterLeft(Scheduler& scheduler) {
    while (Task* const waiter = queue_.Front()) {
        const std::int32_t block = Allocate(waiter->wait.size);
        if (block == 0) return;
        scheduler.Release(*waiter, {E_OK, block});
    }
}

namespace {

CallResult Get(SimulatedKernel& kernel, const Arguments& given, std::int32_t timeout) {
    return kernel.Object<VariablePool>(given[0]).Get(kernel.Tasks(), given[1], timeout);
}

}  // namespace

constinit const ServiceOf<2> get_mpl(
    "get_mpl", "mplid blksz p_blk",
    [](SimulatedKernel& kernel, const Arguments& given) { return Get(kernel, given, TMO_FEVR); },
    "blk");
constinit const ServiceOf<2> pget_mpl(
    "pget_mpl", "mplid blksz p_blk",
    [](SimulatedKernel& kernel, const Arguments& given) { return Get(kernel, given, TMO_POL); },
    "blk");
constinit const ServiceOf<3> tget_mpl(
    "tget_mpl", "mplid blksz p_blk tmout",
    [](SimulatedKernel& kernel, const Arguments& given) { return Get(kernel, given, given[3]); },
    "blk");
constinit const ServiceOf<2> rel_mpl("rel_mpl", "mplid blk",
                                     [](SimulatedKernel& kernel, const Arguments& given) {
                                         return kernel.Object<VariablePool>(given[0]).Return(
                                             kernel.Tasks(), given[1]);
                                     });

}  // namespace kvx::simulation
