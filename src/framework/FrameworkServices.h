#pragma once
// Services that a framework object asks the host for when it is made and keeps as long as it lives;
// none is released.

#include <initializer_list>
#include <vector>

#include "host/Host.h"

// In the order asked; null for those that the host does not deliver. Empty without a host.
inline std::vector<IQUnknown*> FetchServices(IQHost* host, std::initializer_list<GUID> services) {
    std::vector<IQUnknown*> kept;
    if (!host) return kept;
    for (const GUID& id : services) kept.push_back(kvx::host::Service<IQUnknown>(host, id));
    return kept;
}
