#pragma once
// The host that a sub-command gives the window-free core: a trace service and nothing else.

#include "host/ModuleHost.h"
#include "workbench/service/TraceService.h"

namespace kvx::cli {

// While it lives it is the module's host. Borrows the service.
class AnalysisHost final : public IQHost {
  public:
    explicit AnalysisHost(service::TraceService& service) : service_(service) {
        host::SetModuleHost(this);
    }
    AnalysisHost(const AnalysisHost&) = delete;
    AnalysisHost& operator=(const AnalysisHost&) = delete;
    ~AnalysisHost() { host::SetModuleHost(nullptr); }

    HRESULT KVX_CALL QueryInterface(const GUID&, void** out) override {
        *out = nullptr;
        return E_NOINTERFACE;
    }
    std::uint32_t KVX_CALL AddRef() override { return 1; }
    std::uint32_t KVX_CALL Release() override { return 0; }
    HRESULT KVX_CALL GetService(const GUID& id, void** out) override {
        return service_.QueryInterface(id, out);
    }
    // There is no view to tell, and nobody offers or advises anything.
    HRESULT KVX_CALL BroadcastEvent(const EventRecord*) override { return S_OK; }
    HRESULT KVX_CALL Advise(const GUID&, void*) override { return E_NOTIMPL; }
    HRESULT KVX_CALL AddService(const GUID&, void*) override { return E_NOTIMPL; }
    HRESULT KVX_CALL Unadvise(const GUID&, void*) override { return E_NOTIMPL; }
    HRESULT KVX_CALL RemoveService(const GUID&, void*) override { return E_NOTIMPL; }

  private:
    service::TraceService& service_;
};

}  // namespace kvx::cli
