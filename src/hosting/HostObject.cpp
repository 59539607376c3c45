#include "hosting/HostObject.h"

#include <algorithm>

#include "host/Identifiers.h"

namespace kvx::hosting {

void HostObject::AddComponent(IQComponent* component) {
    components_.push_back(component);
}

void HostObject::RemoveComponent(IQComponent* component) {
    std::erase(components_, component);
}

void HostObject::Broadcast(const GUID& event) {
    const EventRecord record{event, 0};
    BroadcastEvent(&record);
}

HRESULT HostObject::QueryInterface(const GUID& id, void** out) {
    if (!out) return E_POINTER;
    if (id == IID_IUnknown) {
        *out = static_cast<IQHost*>(this);
        return S_OK;
    }
    // The frame is kept by components as an interface of the host itself.
    if (id == host::kHostFrame) return GetService(id, out);
    *out = nullptr;
    return E_NOINTERFACE;
}

HRESULT HostObject::BroadcastEvent(const EventRecord* record) {
    if (!record) return E_POINTER;
    return Guarded([&] {
        // A component may be added or removed by what the event starts.
        const std::vector<IQComponent*> components = components_;
        for (IQComponent* component : components) {
            if (std::ranges::find(components_, component) != components_.end()) {
                component->Notify(record);
            }
        }
        if (onEvent) onEvent();
        return S_OK;
    });
}

HRESULT HostObject::GetService(const GUID& service, void** out) {
    if (!out) return E_POINTER;
    const auto found = services_.find(service);
    *out = found == services_.end() ? nullptr : found->second;
    return *out ? S_OK : E_NOINTERFACE;
}

HRESULT HostObject::Advise(const GUID& id, void* client) {
    if (!client) return E_POINTER;
    return Guarded([&] {
        clients_.emplace_back(id, client);
        return S_OK;
    });
}

HRESULT HostObject::AddService(const GUID& service, void* implementation) {
    if (!implementation) return E_POINTER;
    return Guarded([&] {
        services_[service] = implementation;
        return S_OK;
    });
}

HRESULT HostObject::Unadvise(const GUID& id, void* client) {
    const auto found = std::ranges::find(clients_, std::pair(id, client));
    if (found == clients_.end()) return E_FAIL;
    clients_.erase(found);
    return S_OK;
}

HRESULT HostObject::RemoveService(const GUID& service, void* implementation) {
    const auto found = services_.find(service);
    if (found == services_.end() || found->second != implementation) return E_FAIL;
    services_.erase(found);
    return S_OK;
}

}  // namespace kvx::hosting
