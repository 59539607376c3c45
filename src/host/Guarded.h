#pragma once
// The one place where an exception becomes a status code: entry points, interface methods and
// message handlers run their work through it.

#include <new>
#include <utility>

#include "platform/Types.h"

namespace kvx::host {

// Runs work (answering a status) and turns what it throws into one.
template <class Work>
HRESULT Guarded(Work&& work) noexcept {
    try {
        return std::forward<Work>(work)();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_FAIL;
    }
}

}  // namespace kvx::host
