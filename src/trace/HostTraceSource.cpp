#include "trace/HostTraceSource.h"

#include "host/ModuleHost.h"

namespace kvx {

IQOSTraceService* HostTraceSource::Service() {
    return host::TraceService();
}

bool HostTraceSource::HasTrace() {
    auto* const availability =
        host::ModuleService<IQOSTraceAvailability>(host::kOSTraceAvailability);
    VARIANT_BOOL yes = VARIANT_FALSE;
    return availability && availability->IsTraceAvailable(&yes) == S_OK && yes == VARIANT_TRUE;
}

void HostTraceSource::BroadcastDisplayChanged(IViewSender* sender) {
    IQHost* const host = host::ModuleHost();
    if (!host) return;
    const EventRecord record{host::kEventDisplayChanged, reinterpret_cast<std::uintptr_t>(sender)};
    host->BroadcastEvent(&record);
}

}  // namespace kvx
