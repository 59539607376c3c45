#pragma once
// The host object that components are given: services by identifier, advised clients, events.

#include <functional>
#include <map>
#include <vector>

#include "host/Component.h"
#include "hosting/Interface.h"

namespace kvx::hosting {

class HostObject final : public IQHost {
  public:
    // A component takes part in events between these two calls.
    void AddComponent(IQComponent* component);
    void RemoveComponent(IQComponent* component);

    // After every event.
    std::function<void()> onEvent;

    // To every component, in the order in which they were added.
    void Broadcast(const GUID& event);

    // The clients advised under the identifier, in the order of the calls.
    template <class Client>
    std::vector<Client*> Clients(const GUID& id) const {
        std::vector<Client*> found;
        for (const auto& [key, client] : clients_) {
            if (key == id) found.push_back(static_cast<Client*>(client));
        }
        return found;
    }

    HRESULT KVX_CALL QueryInterface(const GUID& id, void** out) override;
    std::uint32_t KVX_CALL AddRef() override { return 1; }
    std::uint32_t KVX_CALL Release() override { return 1; }
    HRESULT KVX_CALL BroadcastEvent(const EventRecord* record) override;
    HRESULT KVX_CALL GetService(const GUID& service, void** out) override;
    HRESULT KVX_CALL Advise(const GUID& id, void* client) override;
    // A service that is there already is replaced.
    HRESULT KVX_CALL AddService(const GUID& service, void* implementation) override;
    // E_FAIL when the client (the implementation) is not known under the identifier.
    HRESULT KVX_CALL Unadvise(const GUID& id, void* client) override;
    HRESULT KVX_CALL RemoveService(const GUID& service, void* implementation) override;

  private:
    std::vector<IQComponent*> components_;
    std::map<GUID, void*> services_;
    std::vector<std::pair<GUID, void*>> clients_;
};

}  // namespace kvx::hosting
