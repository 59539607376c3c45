#pragma once
// Texts of a system call in the service's history.

#include "host/OSTraceService.h"

namespace kvx {

// GetHistoryName, GetHistoryParameter or GetHistoryReturnParameter.
using HistoryGetter = HRESULT (KVX_CALL IQOSTraceService::*)(std::uint32_t, BSTR*);

// Empty when the service cannot tell.
inline CString HistoryText(IQOSTraceService& service, HistoryGetter get, std::uint32_t history) {
    Bstr text;
    if (Failed((service.*get)(history, text.Receive()))) return {};
    return text.Utf8();
}

}  // namespace kvx
