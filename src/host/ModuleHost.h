#pragma once
// The one host object of this module, from which every layer fetches services.

#include "host/Identifiers.h"
#include "host/OSTraceService.h"

namespace kvx::host {

// Null until a host connects and again after it has gone. Borrowed.
IQHost* ModuleHost();
void SetModuleHost(IQHost* host);

// A service of the module's host, fetched anew; null when there is none. It is used for one
// operation and neither kept nor released.
template <class Interface>
Interface* ModuleService(const GUID& id) {
    return Service<Interface>(ModuleHost(), id);
}

inline IQOSTraceService* TraceService() {
    return ModuleService<IQOSTraceService>(kOSTraceService);
}

}  // namespace kvx::host
