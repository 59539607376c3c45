#pragma once
// The host as the component sees it: registration, events, services.
//
// Interfaces are abstract classes whose methods stand in slot order. The component counts no
// references; a host may. Every result is a status: negative is failure.

#include <cstdint>

#include "platform/base/Automation.h"
#include "platform/base/Guid.h"
#include "platform/base/Types.h"

class IQUnknown {
  public:
    virtual HRESULT KVX_CALL QueryInterface(const GUID& id, void** out) = 0;
    virtual std::uint32_t KVX_CALL AddRef() = 0;
    virtual std::uint32_t KVX_CALL Release() = 0;

  protected:
    ~IQUnknown() = default;
};

// Argument of LibraryRegister2.
class IQLibraryRegistration : public IQUnknown {
  public:
    // name is the caller's. The three numbers and the result are the host's business.
    virtual HRESULT KVX_CALL RegisterComponent(BSTR name, std::int32_t a, std::int32_t b,
                                               std::int32_t c, const GUID* component) = 0;

  protected:
    ~IQLibraryRegistration() = default;
};

struct EventRecord {
    GUID id;
    std::uintptr_t datum = 0;  // kEventDisplayChanged: the view that sent it, or 0
};

class IQHost : public IQUnknown {
  public:
    // Hands the record to Notify of every component, the caller's included.
    virtual HRESULT KVX_CALL BroadcastEvent(const EventRecord* record) = 0;
    // *out borrows the service; negative when there is none.
    virtual HRESULT KVX_CALL GetService(const GUID& service, void** out) = 0;
    virtual HRESULT KVX_CALL Advise(const GUID& id, void* client) = 0;
    virtual HRESULT KVX_CALL AddService(const GUID& service, void* implementation) = 0;
    virtual HRESULT KVX_CALL Unadvise(const GUID& id, void* client) = 0;
    virtual HRESULT KVX_CALL RemoveService(const GUID& service, void* implementation) = 0;

  protected:
    ~IQHost() = default;
};

namespace kvx::host {

// The service as its interface, or null. Nothing is kept: callers ask anew for every operation.
template <class Interface>
Interface* Service(IQHost* host, const GUID& id) {
    void* out = nullptr;
    if (!host || Failed(host->GetService(id, &out))) return nullptr;
    return static_cast<Interface*>(out);
}

}  // namespace kvx::host
