#include "workbench/simulation/TaskServices.h"

#include <utility>

#include "workbench/simulation/SimulatedKernel.h"

namespace kvx::simulation {
namespace {

Task& TaskOf(SimulatedKernel& kernel, const Arguments& given) {
    return given[0] == TSK_SELF ? *kernel.Tasks().Running() : kernel.TaskOf(given[0]);
}

CallResult Activate(SimulatedKernel& kernel, const Arguments& given) {
    Task& task = TaskOf(kernel, given);
    if (task.state == LoggedState::Dormant) {
        kernel.Tasks().Activate(task);
        return {};
    }
    if (task.activations == kMostRequests) return {E_QOVR};
    ++task.activations;
    return {};
}

CallResult Terminate(SimulatedKernel& kernel, const Arguments& given) {
    Task& task = TaskOf(kernel, given);
    if (&task == kernel.Tasks().Running()) return {E_ILUSE};
    if (task.state == LoggedState::Dormant) return {E_OBJ};
    kernel.Tasks().Exit(task);
    return {};
}

CallResult ChangePriority(SimulatedKernel& kernel, const Arguments& given) {
    Task& task = TaskOf(kernel, given);
    if (given[1] < 1 || given[1] > kLowestPriority) return {E_PAR};
    if (task.state == LoggedState::Dormant) return {E_OBJ};
    task.basePriority = given[1];
    if (task.held.empty()) kernel.Tasks().SetPriority(task, given[1], Scheduler::Place::Last);
    KernelMutex::UpdatePriority(kernel.Tasks(), task);
    if (task.wait.mutex) task.wait.mutex->WaiterLeft(kernel.Tasks());
    return {};
}

CallResult Sleep(SimulatedKernel& kernel, std::int32_t timeout) {
    Task& task = *kernel.Tasks().Running();
    if (task.wakeups == 0) return kernel.Tasks().Block(nullptr, timeout, {.sleep = true});
    --task.wakeups;
    return {};
}

CallResult WakeUp(SimulatedKernel& kernel, const Arguments& given) {
    Task& task = TaskOf(kernel, given);
    if (task.state == LoggedState::Dormant) return {E_OBJ};
    if (task.wait.sleep) {
        kernel.Tasks().Release(task);
        return {};
    }
    if (task.wakeups == kMostRequests) return {E_QOVR};
    ++task.wakeups;
    return {};
}

CallResult ReleaseWait(SimulatedKernel& kernel, const Arguments& given) {
    Task& task = TaskOf(kernel, given);
    if (!task.IsWaiting()) return {E_OBJ};
    kernel.Tasks().Abandon(task, E_RLWAI);
    return {};
}

CallResult Rotate(SimulatedKernel& kernel, const Arguments& given) {
    if (given[0] < 1 || given[0] > kLowestPriority) return {E_PAR};
    kernel.Tasks().Rotate(given[0]);
    return {};
}

CallResult Exit(SimulatedKernel& kernel, const Arguments&) {
    kernel.Tasks().Exit(*kernel.Tasks().Running());
    return {};
}

}  // namespace

constinit const ServiceOf<1> act_tsk("act_tsk", "tskid", Activate);
constinit const ServiceOf<1> iact_tsk("iact_tsk", "tskid", Activate);
constinit const ServiceOf<1> can_act("can_act", "tskid",
                                     [](SimulatedKernel& kernel, const Arguments& given) {
                                         return CallResult{
                                             std::exchange(TaskOf(kernel, given).activations, 0)};
                                     });
constinit const ServiceOf<1> ter_tsk("ter_tsk", "tskid", Terminate);
constinit const ServiceOf<1> get_pri(
    "get_pri", "tskid p_tskpri",
    [](SimulatedKernel& kernel, const Arguments& given) {
        return CallResult{E_OK, TaskOf(kernel, given).priority};
    },
    "tskpri");
constinit const ServiceOf<2> chg_pri("chg_pri", "tskid tskpri", ChangePriority);
constinit const ServiceOf<0> ext_tsk("ext_tsk", "", Exit);
constinit const ServiceOf<0> slp_tsk("slp_tsk", "", [](SimulatedKernel& kernel, const Arguments&) {
    return Sleep(kernel, TMO_FEVR);
});
constinit const ServiceOf<1> tslp_tsk("tslp_tsk", "tmout",
                                      [](SimulatedKernel& kernel, const Arguments& given) {
                                          return Sleep(kernel, given[0]);
                                      });
constinit const ServiceOf<1> dly_tsk("dly_tsk", "dlytim",
                                     [](SimulatedKernel& kernel, const Arguments& given) {
                                         return kernel.Tasks().Block(nullptr, given[0],
                                                                     {.ercd = E_OK});
                                     });
constinit const ServiceOf<1> wup_tsk("wup_tsk", "tskid", WakeUp);
constinit const ServiceOf<1> iwup_tsk("iwup_tsk", "tskid", WakeUp);
constinit const ServiceOf<1> can_wup("can_wup", "tskid",
                                     [](SimulatedKernel& kernel, const Arguments& given) {
                                         return CallResult{
                                             std::exchange(TaskOf(kernel, given).wakeups, 0)};
                                     });
constinit const ServiceOf<1> rel_wai("rel_wai", "tskid", ReleaseWait);
constinit const ServiceOf<1> irel_wai("irel_wai", "tskid", ReleaseWait);
constinit const ServiceOf<1> sus_tsk("sus_tsk", "tskid",
                                     [](SimulatedKernel& kernel, const Arguments& given) {
                                         return kernel.Tasks().Suspend(TaskOf(kernel, given));
                                     });
constinit const ServiceOf<1> rsm_tsk("rsm_tsk", "tskid",
                                     [](SimulatedKernel& kernel, const Arguments& given) {
                                         return kernel.Tasks().Resume(TaskOf(kernel, given));
                                     });
constinit const ServiceOf<1> rot_rdq("rot_rdq", "tskpri", Rotate);
constinit const ServiceOf<1> irot_rdq("irot_rdq", "tskpri", Rotate);

}  // namespace kvx::simulation
