#include "workbench/simulation/Mailbox.h"

#include "workbench/simulation/SimulatedKernel.h"

namespace kvx::simulation {

CallResult Mailbox::Send(Scheduler& scheduler, std::int32_t message) {
    if (Task* const receiver = receivers_.Front())
        scheduler.Release(*receiver, {E_OK, message});
    else
        messages_.push_back(message);
    return {};
}

CallResult Mailbox::Receive(Scheduler& scheduler, std::int32_t timeout) {
    if (messages_.empty()) return scheduler.Block(&receivers_, timeout);
    const std::int32_t message = messages_.front();
    messages_.pop_front();
    return {E_OK, message};
}

namespace {

CallResult Receive(SimulatedKernel& kernel, std::int32_t mailbox, std::int32_t timeout) {
    return kernel.Object<Mailbox>(mailbox).Receive(kernel.Tasks(), timeout);
}

}  // namespace

constinit const ServiceOf<2> snd_mbx("snd_mbx", "mbxid pk_msg",
                                     [](SimulatedKernel& kernel, const Arguments& given) {
                                         return kernel.Object<Mailbox>(given[0]).Send(
                                             kernel.Tasks(), given[1]);
                                     });
constinit const ServiceOf<1> rcv_mbx(
    "rcv_mbx", "mbxid ppk_msg",
    [](SimulatedKernel& kernel, const Arguments& given) {
        return Receive(kernel, given[0], TMO_FEVR);
    },
    "pk_msg");
constinit const ServiceOf<1> prcv_mbx(
    "prcv_mbx", "mbxid ppk_msg",
    [](SimulatedKernel& kernel, const Arguments& given) {
        return Receive(kernel, given[0], TMO_POL);
    },
    "pk_msg");
constinit const ServiceOf<2> trcv_mbx(
    "trcv_mbx", "mbxid ppk_msg tmout",
    [](SimulatedKernel& kernel, const Arguments& given) {
        return Receive(kernel, given[0], given[2]);
    },
    "pk_msg");

}  // namespace kvx::simulation
