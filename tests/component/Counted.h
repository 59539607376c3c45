#pragma once
// Reference counting of a host object that lives in a test's scope.

#include "host/Host.h"

namespace kvx::test {

template <class Interface>
class Counted : public Interface {
  public:
    HRESULT KVX_CALL QueryInterface(const GUID&, void** out) override {
        *out = nullptr;
        return E_NOINTERFACE;
    }
    std::uint32_t KVX_CALL AddRef() override { return ++references; }
    std::uint32_t KVX_CALL Release() override { return --references; }
    std::uint32_t references = 1;
};

}  // namespace kvx::test
