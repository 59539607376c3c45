#include "workbench/simulation/MessageBuffer.h"

#include "workbench/simulation/SimulatedKernel.h"

namespace kvx::simulation {

void MessageBuffer::Put(std::int32_t size) {
    free_ -= Needed(size);
    sizes_.push_back(size);
}

CallResult MessageBuffer::Send(Scheduler& scheduler, std::int32_t size, std::int32_t timeout) {
    if (size <= 0 || Needed(size) > size_) return {E_PAR};
    if (Task* const receiver = receivers_.Front()) {
        scheduler.Release(*receiver, {size});
        return {};
    }
    if (!senders_.Empty() || Needed(size) > free_)
        return scheduler.Block(&senders_, timeout, {.size = size});
    Put(size);
    return {};
}

CallResult MessageBuffer::Receive(Scheduler& scheduler, std::int32_t timeout) {
    if (sizes_.empty()) return scheduler.Block(&receivers_, timeout);
    const std::int32_t size = sizes_.front();
    sizes_.pop_front();
    free_ += Needed(size);
    WaiterLeft(scheduler);
    return {size};
}

// The senders whose messages now fit go on.
void MessageBuffer::WaiterLeft(Scheduler& scheduler) {
    for (Task* sender = senders_.Front(); sender && Needed(sender->wait.size) <= free_;
         sender = senders_.Front()) {
        Put(sender->wait.size);
        scheduler.Release(*sender);
    }
}

namespace {

CallResult Send(SimulatedKernel& kernel, const Arguments& given, std::int32_t timeout) {
    return kernel.Object<MessageBuffer>(given[0]).Send(kernel.Tasks(), given[2], timeout);
}

CallResult Receive(SimulatedKernel& kernel, std::int32_t buffer, std::int32_t timeout) {
    return kernel.Object<MessageBuffer>(buffer).Receive(kernel.Tasks(), timeout);
}

}  // namespace

constinit const ServiceOf<3> snd_mbf("snd_mbf", "mbfid msg msgsz",
                                     [](SimulatedKernel& kernel, const Arguments& given) {
                                         return Send(kernel, given, TMO_FEVR);
                                     });
constinit const ServiceOf<3> psnd_mbf("psnd_mbf", "mbfid msg msgsz",
                                      [](SimulatedKernel& kernel, const Arguments& given) {
                                          return Send(kernel, given, TMO_POL);
                                      });
constinit const ServiceOf<4> tsnd_mbf("tsnd_mbf", "mbfid msg msgsz tmout",
                                      [](SimulatedKernel& kernel, const Arguments& given) {
                                          return Send(kernel, given, given[3]);
                                      });
constinit const ServiceOf<2> rcv_mbf("rcv_mbf", "mbfid msg",
                                     [](SimulatedKernel& kernel, const Arguments& given) {
                                         return Receive(kernel, given[0], TMO_FEVR);
                                     });
constinit const ServiceOf<2> prcv_mbf("prcv_mbf", "mbfid msg",
                                      [](SimulatedKernel& kernel, const Arguments& given) {
                                          return Receive(kernel, given[0], TMO_POL);
                                      });
constinit const ServiceOf<3> trcv_mbf("trcv_mbf", "mbfid msg tmout",
                                      [](SimulatedKernel& kernel, const Arguments& given) {
                                          return Receive(kernel, given[0], given[2]);
                                      });

}  // namespace kvx::simulation
