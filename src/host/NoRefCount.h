#pragma once
// Reference counting of the component's interfaces: there is none. Object lifetimes are bounded by
// the entry points and by start-up and shut-down.

#include <cstdint>

#include "platform/base/Types.h"

namespace kvx::host {

template <class Interface>
class NoRefCount : public Interface {
  public:
    std::uint32_t KVX_CALL AddRef() override { return 1; }
    std::uint32_t KVX_CALL Release() override { return 0; }
};

}  // namespace kvx::host
