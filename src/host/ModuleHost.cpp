#include "host/ModuleHost.h"

namespace kvx::host {

namespace {
IQHost* moduleHost = nullptr;
}

IQHost* ModuleHost() {
    return moduleHost;
}

void SetModuleHost(IQHost* host) {
    moduleHost = host;
}

}  // namespace kvx::host
