#include "workbench/simulation/EventFlag.h"

#include "workbench/simulation/SimulatedKernel.h"

namespace kvx::simulation {

bool EventFlag::Fits(std::int32_t pattern, std::int32_t mode) const {
    return mode == TWF_ANDW ? (bits_ & pattern) == pattern : (bits_ & pattern) != 0;
}

CallResult EventFlag::Take() {
    const CallResult result{E_OK, bits_};
    if (clears_) bits_ = 0;
    return result;
}

CallResult EventFlag::Set(Scheduler& scheduler, std::int32_t pattern) {
    bits_ |= pattern;
    const std::vector<Task*> waiters = queue_.Tasks();
    for (Task* const waiter : waiters)
        if (Fits(waiter->wait.data, waiter->wait.size)) scheduler.Release(*waiter, Take());
    return {};
}

CallResult EventFlag::Clear(std::int32_t pattern) {
    bits_ &= pattern;
    return {};
}

CallResult EventFlag::Wait(Scheduler& scheduler, std::int32_t pattern, std::int32_t mode,
                           std::int32_t timeout) {
    if (pattern == 0) return {E_PAR};
    if (Fits(pattern, mode)) return Take();
    return scheduler.Block(&queue_, timeout, {.data = pattern, .size = mode});
}

namespace {

CallResult Set(SimulatedKernel& kernel, const Arguments& given) {
    return kernel.Object<EventFlag>(given[0]).Set(kernel.Tasks(), given[1]);
}

CallResult WaitFor(SimulatedKernel& kernel, const Arguments& given, std::int32_t timeout) {
    return kernel.Object<EventFlag>(given[0]).Wait(kernel.Tasks(), given[1], given[2], timeout);
}

}  // namespace

constinit const ServiceOf<2> set_flg("set_flg", "flgid setptn", Set);
constinit const ServiceOf<2> iset_flg("iset_flg", "flgid setptn", Set);
constinit const ServiceOf<2> clr_flg("clr_flg", "flgid clrptn",
                                     [](SimulatedKernel& kernel, const Arguments& given) {
                                         return kernel.Object<EventFlag>(given[0]).Clear(given[1]);
                                     });
constinit const ServiceOf<3> wai_flg(
    "wai_flg", "flgid waiptn wfmode p_flgptn",
    [](SimulatedKernel& kernel, const Arguments& given) {
        return WaitFor(kernel, given, TMO_FEVR);
    },
    "flgptn");
constinit const ServiceOf<3> pol_flg(
    "pol_flg", "flgid waiptn wfmode p_flgptn",
    [](SimulatedKernel& kernel, const Arguments& given) { return WaitFor(kernel, given, TMO_POL); },
    "flgptn");
constinit const ServiceOf<4> twai_flg(
    "twai_flg", "flgid waiptn wfmode p_flgptn tmout",
    [](SimulatedKernel& kernel, const Arguments& given) {
        return WaitFor(kernel, given, given[4]);
    },
    "flgptn");

}  // namespace kvx::simulation
