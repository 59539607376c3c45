#include "workbench/simulation/Semaphore.h"

#include "workbench/simulation/SimulatedKernel.h"

namespace kvx::simulation {

CallResult Semaphore::Signal(Scheduler& scheduler) {
    if (Task* const waiter = queue_.Front()) {
        scheduler.Release(*waiter);
        return {};
    }
    if (count_ == maximum_) return {E_QOVR};
    ++count_;
    return {};
}

CallResult Semaphore::Wait(Scheduler& scheduler, std::int32_t timeout) {
    if (count_ == 0) return scheduler.Block(&queue_, timeout);
    --count_;
    return {};
}

namespace {

CallResult Signal(SimulatedKernel& kernel, const Arguments& given) {
    return kernel.Object<Semaphore>(given[0]).Signal(kernel.Tasks());
}

CallResult WaitFor(SimulatedKernel& kernel, std::int32_t semaphore, std::int32_t timeout) {
    return kernel.Object<Semaphore>(semaphore).Wait(kernel.Tasks(), timeout);
}

}  // namespace

constinit const ServiceOf<1> sig_sem("sig_sem", "semid", Signal);
constinit const ServiceOf<1> isig_sem("isig_sem", "semid", Signal);
constinit const ServiceOf<1> wai_sem("wai_sem", "semid",
                                     [](SimulatedKernel& kernel, const Arguments& given) {
                                         return WaitFor(kernel, given[0], TMO_FEVR);
                                     });
constinit const ServiceOf<1> pol_sem("pol_sem", "semid",
                                     [](SimulatedKernel& kernel, const Arguments& given) {
                                         return WaitFor(kernel, given[0], TMO_POL);
                                     });
constinit const ServiceOf<2> twai_sem("twai_sem", "semid tmout",
                                      [](SimulatedKernel& kernel, const Arguments& given) {
                                          return WaitFor(kernel, given[0], given[1]);
                                      });

}  // namespace kvx::simulation
