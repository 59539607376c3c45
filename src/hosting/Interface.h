#pragma once
// What every interface object of the host has in common: it answers its own identifier and is not
// counted; its owner keeps it for as long as a component is connected.

#include "host/Host.h"
#include "platform/base/Guarded.h"

namespace kvx::hosting {

template <class Interface, GUID Id>
class Implementation : public Interface {
  public:
    HRESULT KVX_CALL QueryInterface(const GUID& id, void** out) override {
        if (!out) return E_POINTER;
        *out = id == Id || id == IID_IUnknown ? static_cast<Interface*>(this) : nullptr;
        return *out ? S_OK : E_NOINTERFACE;
    }
    std::uint32_t KVX_CALL AddRef() override { return 1; }
    std::uint32_t KVX_CALL Release() override { return 1; }

  protected:
    ~Implementation() = default;
};

}  // namespace kvx::hosting
