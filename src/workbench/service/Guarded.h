#pragma once
// Keeps exceptions inside: an interface call answers a status instead.

#include <new>

#include "platform/Types.h"

namespace kvx::service {

template <class Operation>
HRESULT Guarded(Operation operation) noexcept {
    try {
        return operation();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_FAIL;
    }
}

}  // namespace kvx::service
