#include "workbench/simulation/KernelMutex.h"

#include <algorithm>

#include "workbench/simulation/SimulatedKernel.h"

namespace kvx::simulation {

CallResult KernelMutex::Lock(Scheduler& scheduler, std::int32_t timeout) {
    Task& task = *scheduler.Running();
    if (owner_ == &task) return {E_ILUSE};
    if (protocol_ == Protocol::Ceiling && task.basePriority < ceiling_) return {E_ILUSE};
    if (!owner_) {
        Take(scheduler, task);
        return {};
    }
    const CallResult result = scheduler.Block(&queue_, timeout, {.mutex = this});
    UpdatePriority(scheduler, *owner_);
    return result;
}

CallResult KernelMutex::Unlock(Scheduler& scheduler) {
    if (owner_ != scheduler.Running()) return {E_ILUSE};
    GiveUp(scheduler);
    return {};
}

void KernelMutex::GiveUp(Scheduler& scheduler) {
    Task& before = *owner_;
    owner_ = nullptr;
    std::erase(before.held, this);
    if (Task* const next = queue_.Front()) {
        Take(scheduler, *next);
        scheduler.Release(*next);
    }
    UpdatePriority(scheduler, before);
}

void KernelMutex::WaiterLeft(Scheduler& scheduler) {
    if (owner_) UpdatePriority(scheduler, *owner_);
}

void KernelMutex::Take(Scheduler& scheduler, Task& task) {
    owner_ = &task;
    task.held.push_back(this);
    UpdatePriority(scheduler, task);
}

std::int32_t KernelMutex::PriorityOfOwner() const {
    if (protocol_ == Protocol::Ceiling) return ceiling_;
    if (protocol_ == Protocol::None || queue_.Empty()) return kLowestPriority;
    return queue_.Front()->priority;
}

void KernelMutex::UpdatePriority(Scheduler& scheduler, Task& task) {
    std::int32_t priority = task.basePriority;
    for (const KernelMutex* const mutex : task.held)
        priority = std::min(priority, mutex->PriorityOfOwner());
    if (priority == task.priority) return;
    const bool runs = &task == scheduler.Running();
    scheduler.SetPriority(task, priority, runs ? Scheduler::Place::First : Scheduler::Place::Last);
    if (task.wait.mutex) UpdatePriority(scheduler, *task.wait.mutex->owner_);
}

namespace {

CallResult Lock(SimulatedKernel& kernel, std::int32_t mutex, std::int32_t timeout) {
    return kernel.Object<KernelMutex>(mutex).Lock(kernel.Tasks(), timeout);
}

}  // namespace

constinit const ServiceOf<1> loc_mtx("loc_mtx", "mtxid",
                                     [](SimulatedKernel& kernel, const Arguments& given) {
                                         return Lock(kernel, given[0], TMO_FEVR);
                                     });
constinit const ServiceOf<1> ploc_mtx("ploc_mtx", "mtxid",
                                      [](SimulatedKernel& kernel, const Arguments& given) {
                                          return Lock(kernel, given[0], TMO_POL);
                                      });
constinit const ServiceOf<2> tloc_mtx("tloc_mtx", "mtxid tmout",
                                      [](SimulatedKernel& kernel, const Arguments& given) {
                                          return Lock(kernel, given[0], given[1]);
                                      });
constinit const ServiceOf<1> unl_mtx("unl_mtx", "mtxid",
                                     [](SimulatedKernel& kernel, const Arguments& given) {
                                         return kernel.Object<KernelMutex>(given[0]).Unlock(
                                             kernel.Tasks());
                                     });

}  // namespace kvx::simulation
