#include "workbench/simulation/SystemServices.h"

#include "workbench/simulation/SimulatedKernel.h"

namespace kvx::simulation {
namespace {

CallResult StartAlarm(SimulatedKernel& kernel, const Arguments& given) {
    TimedHandler& alarm = kernel.Timed(HandlerKind::Alarm, given[0]);
    kernel.Timers().Stop(alarm.timer);
    kernel.Timers().StartAfter(alarm.timer, given[1]);
    return {};
}

CallResult StopAlarm(SimulatedKernel& kernel, const Arguments& given) {
    kernel.Timers().Stop(kernel.Timed(HandlerKind::Alarm, given[0]).timer);
    return {};
}

CallResult StartCyclic(SimulatedKernel& kernel, const Arguments& given) {
    TimedHandler& cyclic = kernel.Timed(HandlerKind::Cyclic, given[0]);
    kernel.Timers().Stop(cyclic.timer);
    kernel.Timers().StartAfter(cyclic.timer, cyclic.phase);
    return {};
}

CallResult Lock(SimulatedKernel& kernel, bool locked) {
    kernel.SetLocked(locked);
    return {};
}

CallResult Enable(SimulatedKernel& kernel, const Arguments& given, bool enabled) {
    kernel.Interrupts().Line(given[0]).enabled = enabled;
    return {};
}

}  // namespace

constinit const ServiceOf<1> sta_cyc("sta_cyc", "cycid", StartCyclic);
constinit const ServiceOf<1> stp_cyc("stp_cyc", "cycid",
                                     [](SimulatedKernel& kernel, const Arguments& given) {
                                         kernel.Timers().Stop(
                                             kernel.Timed(HandlerKind::Cyclic, given[0]).timer);
                                         return CallResult{};
                                     });
constinit const ServiceOf<2> sta_alm("sta_alm", "almid almtim", StartAlarm);
constinit const ServiceOf<1> stp_alm("stp_alm", "almid", StopAlarm);
constinit const ServiceOf<0> get_tim(
    "get_tim", "p_systim",
    [](SimulatedKernel& kernel, const Arguments&) {
        return CallResult{E_OK, static_cast<std::int32_t>(kernel.Timers().Now())};
    },
    "systim");
constinit const ServiceOf<0> loc_cpu("loc_cpu", "", [](SimulatedKernel& kernel, const Arguments&) {
    return Lock(kernel, true);
});
constinit const ServiceOf<0> unl_cpu("unl_cpu", "", [](SimulatedKernel& kernel, const Arguments&) {
    return Lock(kernel, false);
});
constinit const ServiceOf<1> dis_int("dis_int", "intno",
                                     [](SimulatedKernel& kernel, const Arguments& given) {
                                         return Enable(kernel, given, false);
                                     });
constinit const ServiceOf<1> ena_int("ena_int", "intno",
                                     [](SimulatedKernel& kernel, const Arguments& given) {
                                         return Enable(kernel, given, true);
                                     });

}  // namespace kvx::simulation
