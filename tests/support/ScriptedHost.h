#pragma once
// A host that hands out what a test gives it and records what is broadcast.

#include <functional>
#include <map>
#include <vector>

#include "host/ModuleHost.h"
#include "support/ScriptedTraceService.h"

namespace kvx::test {

// While it lives it is the module's host.
class ScriptedHost final : public IQHost {
  public:
    ScriptedHost() { host::SetModuleHost(this); }
    explicit ScriptedHost(ScriptedTraceService& service) : ScriptedHost() { Offer(service); }
    ScriptedHost(const ScriptedHost&) = delete;
    ScriptedHost& operator=(const ScriptedHost&) = delete;
    ~ScriptedHost() { host::SetModuleHost(nullptr); }

    void Offer(ScriptedTraceService& service) {
        services[host::kOSTraceService] = static_cast<IQOSTraceService*>(&service);
        services[host::kOSTraceAvailability] = static_cast<IQOSTraceAvailability*>(&service);
    }

    std::map<GUID, void*> services;
    std::vector<EventRecord> broadcasts;
    std::function<void(const EventRecord&)> onBroadcast;

    HRESULT KVX_CALL QueryInterface(const GUID&, void** out) override {
        *out = nullptr;
        return E_NOINTERFACE;
    }
    std::uint32_t KVX_CALL AddRef() override { return 1; }
    std::uint32_t KVX_CALL Release() override { return 0; }
    HRESULT KVX_CALL BroadcastEvent(const EventRecord* record) override {
        broadcasts.push_back(*record);
        if (onBroadcast) onBroadcast(*record);
        return S_OK;
    }
    HRESULT KVX_CALL GetService(const GUID& service, void** out) override {
        const auto at = services.find(service);
        if (at == services.end()) return E_NOINTERFACE;
        *out = at->second;
        return S_OK;
    }
    HRESULT KVX_CALL Advise(const GUID&, void*) override { return S_OK; }
    HRESULT KVX_CALL AddService(const GUID& service, void* implementation) override {
        services[service] = implementation;
        return S_OK;
    }
    HRESULT KVX_CALL Unadvise(const GUID&, void*) override { return S_OK; }
    HRESULT KVX_CALL RemoveService(const GUID& service, void*) override {
        services.erase(service);
        return S_OK;
    }
};

}  // namespace kvx::test
