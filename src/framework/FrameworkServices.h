#pragma once
// Services that a framework object asks the host for when it is made and keeps as long as it lives;
// none is released.

#include <initializer_list>
#include <vector>

#include "host/Host.h"
#include "host/Identifiers.h"

// The host object as the framework's own interface; null when it is none.
inline IQUnknown* QueryHostFrame(IQHost* host) {
    void* frame = nullptr;
    if (!host || Failed(host->QueryInterface(kvx::host::kHostFrame, &frame))) return nullptr;
    return static_cast<IQUnknown*>(frame);
}

// In the order asked; null for those that the host does not deliver. Empty without a host.
inline std::vector<IQUnknown*> FetchServices(IQHost* host, std::initializer_list<GUID> services) {
    std::vector<IQUnknown*> kept;
    if (!host) return kept;
    for (const GUID& id : services) kept.push_back(kvx::host::Service<IQUnknown>(host, id));
    return kept;
}
