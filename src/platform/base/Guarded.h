#pragma once
// The one place where an exception ends. Everything that another module or the toolkit calls runs
// its work through here: entry points, interface operations, message handlers, drops.

#include <exception>
#include <new>
#include <type_traits>
#include <utility>

#include "platform/base/Types.h"

namespace kvx {

// Tells the developer about an exception that was stopped, on standard error.
void ReportException(const char* what) noexcept;

// The work's answer; the failing one of this kind of call when it throws.
template <class Work>
auto Guarded(std::type_identity_t<std::invoke_result_t<Work>> failing, Work&& work) noexcept
    -> std::invoke_result_t<Work> {
    try {
        return std::forward<Work>(work)();
    } catch (const std::exception& error) {
        ReportException(error.what());
    } catch (...) {
        ReportException("unknown exception");
    }
    return failing;
}

// Of a call that answers a status. Work that answers nothing succeeds when it does not throw.
template <class Work>
HRESULT Guarded(Work&& work) noexcept {
    if constexpr (std::is_void_v<std::invoke_result_t<Work>>) {
        return Guarded(E_FAIL, [&] { return work(), S_OK; });
    } else {
        return Guarded(E_FAIL, [&] {
            try {
                return work();
            } catch (const std::bad_alloc&) {
                return E_OUTOFMEMORY;
            }
        });
    }
}

}  // namespace kvx
