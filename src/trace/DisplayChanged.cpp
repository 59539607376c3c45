#include "trace/DisplayChanged.h"

#include "host/ModuleHost.h"

namespace kvx {

void BroadcastDisplayChanged(IViewSender* sender) {
    IQHost* const host = host::ModuleHost();
    if (!host) return;
    const EventRecord record{host::kEventDisplayChanged, reinterpret_cast<std::uintptr_t>(sender)};
    host->BroadcastEvent(&record);
}

}  // namespace kvx
