#include "workbench/simulation/DataQueue.h"

#include "workbench/simulation/SimulatedKernel.h"

namespace kvx::simulation {

CallResult DataQueue::Send(Scheduler& scheduler, std::int32_t data, std::int32_t timeout) {
    if (Task* const receiver = receivers_.Front()) {
        scheduler.Release(*receiver, {E_OK, data});
        return {};
    }
    if (data_.size() == capacity_) return scheduler.Block(&senders_, timeout, {.data = data});
    data_.push_back(data);
    return {};
}

CallResult DataQueue::Receive(Scheduler& scheduler, std::int32_t timeout) {
    Task* const sender = senders_.Front();
    if (data_.empty() && !sender) return scheduler.Block(&receivers_, timeout);
    if (sender) {
        data_.push_back(sender->wait.data);
        scheduler.Release(*sender);
    }
    const std::int32_t data = data_.front();
    data_.pop_front();
    return {E_OK, data};
}

namespace {

CallResult Send(SimulatedKernel& kernel, const Arguments& given, std::int32_t timeout) {
    return kernel.Object<DataQueue>(given[0]).Send(kernel.Tasks(), given[1], timeout);
}

CallResult SendAtOnce(SimulatedKernel& kernel, const Arguments& given) {
    return Send(kernel, given, TMO_POL);
}

CallResult Receive(SimulatedKernel& kernel, std::int32_t queue, std::int32_t timeout) {
    return kernel.Object<DataQueue>(queue).Receive(kernel.Tasks(), timeout);
}

}  // namespace

constinit const ServiceOf<2> snd_dtq("snd_dtq", "dtqid data",
                                     [](SimulatedKernel& kernel, const Arguments& given) {
                                         return Send(kernel, given, TMO_FEVR);
                                     });
constinit const ServiceOf<2> psnd_dtq("psnd_dtq", "dtqid data", SendAtOnce);
constinit const ServiceOf<2> ipsnd_dtq("ipsnd_dtq", "dtqid data", SendAtOnce);
constinit const ServiceOf<3> tsnd_dtq("tsnd_dtq", "dtqid data tmout",
                                      [](SimulatedKernel& kernel, const Arguments& given) {
                                          return Send(kernel, given, given[2]);
                                      });
constinit const ServiceOf<1> rcv_dtq(
    "rcv_dtq", "dtqid p_data",
    [](SimulatedKernel& kernel, const Arguments& given) {
        return Receive(kernel, given[0], TMO_FEVR);
    },
    "data");
constinit const ServiceOf<1> prcv_dtq(
    "prcv_dtq", "dtqid p_data",
    [](SimulatedKernel& kernel, const Arguments& given) {
        return Receive(kernel, given[0], TMO_POL);
    },
    "data");
constinit const ServiceOf<2> trcv_dtq(
    "trcv_dtq", "dtqid p_data tmout",
    [](SimulatedKernel& kernel, const Arguments& given) {
        return Receive(kernel, given[0], given[2]);
    },
    "data");

}  // namespace kvx::simulation
