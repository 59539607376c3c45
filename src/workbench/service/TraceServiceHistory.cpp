// The part of the trace service that searches the system calls and hands out their history.

#include "platform/base/Guarded.h"
#include "workbench/service/TraceService.h"
#include "workbench/service/TraceSession.h"

namespace kvx::service {
namespace {

// Calls read with the event of a history entry, where there is one.
template <class Read>
HRESULT WithEntry(TraceSession* session, std::uint32_t history, const void* out, Read read) {
    if (!out) return E_POINTER;
    if (!session) return E_FAIL;
    return Guarded([&] {
        if (history >= session->History().Count()) return E_INVALIDARG;
        read(session->History().EventAt(history));
        return S_OK;
    });
}

HRESULT Answer(const std::optional<std::uint32_t>& event, std::uint32_t* found) {
    if (!event) return E_FAIL;
    *found = *event;
    return S_OK;
}

}  // namespace

// Searching goes on behind the indicator's event, so that a repeated search finds the next call.
HRESULT TraceService::SearchFirst(std::uint32_t from, std::uint32_t* found, VARIANT_BOOL* more,
                                  VARIANT_BOOL* hit) {
    if (!found || !more || !hit) return E_POINTER;
    if (!session_ || !dialogs_) return E_FAIL;
    return Guarded([&] {
        SearchCondition condition = dialogs_->LastCondition();
        if (!dialogs_->AskSearchCondition(condition)) return E_FAIL;
        session_->Condition() = condition;
        const auto event =
            condition.upwards ? session_->FindBefore(from) : session_->FindFrom(from + 1);
        *hit = event ? VARIANT_TRUE : VARIANT_FALSE;
        *more = !event && !condition.upwards && session_->HasMore() ? VARIANT_TRUE : VARIANT_FALSE;
        if (event) *found = *event;
        return S_OK;
    });
}

HRESULT TraceService::SearchPrevious(std::uint32_t from, std::uint32_t* found) {
    if (!found) return E_POINTER;
    if (!session_ || !dialogs_) return E_FAIL;
    return Guarded([&] {
        session_->Condition() = dialogs_->LastCondition();
        return Answer(session_->FindBefore(from), found);
    });
}

// from 2^32 - 1 stands for "before the first event".
HRESULT TraceService::SearchNext(std::uint32_t from, std::uint32_t* found) {
    if (!found) return E_POINTER;
    if (!session_ || !dialogs_) return E_FAIL;
    return Guarded([&] {
        session_->Condition() = dialogs_->LastCondition();
        return Answer(session_->FindFrom(from + 1), found);
    });
}

HRESULT TraceService::StartPickUp() {
    if (!session_ || !dialogs_) return E_FAIL;
    return Guarded([&] {
        PickUp chosen;
        if (!dialogs_->AskPickUp(session_->History().Occurring(), chosen)) return E_FAIL;
        session_->History().PickUpOnly(chosen);
        return S_OK;
    });
}

HRESULT TraceService::EndPickUp() {
    if (session_) session_->History().EndPickUp();
    return S_OK;
}

HRESULT TraceService::IsPickUpActive(VARIANT_BOOL* yes) {
    if (!yes) return E_POINTER;
    *yes = session_ && session_->History().IsPickUpActive() ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT TraceService::GetHistoryCount(std::uint32_t* count) {
    if (!count) return E_POINTER;
    if (!session_) return E_FAIL;
    return Guarded([&] {
        *count = session_->History().Count();
        return S_OK;
    });
}

HRESULT TraceService::GetHistoryEvent(std::uint32_t history, std::uint32_t* event) {
    return WithEntry(session_.get(), history, event, [&](std::uint32_t at) { *event = at; });
}

HRESULT TraceService::GetHistoryIndex(std::uint32_t event, std::uint32_t* history) {
    if (!history) return E_POINTER;
    if (!session_) return E_FAIL;
    return Guarded([&] { return Answer(session_->History().IndexOf(event), history); });
}

HRESULT TraceService::GetHistoryNumber(std::uint32_t history, std::int32_t* number) {
    return WithEntry(session_.get(), history, number, [&](std::uint32_t event) {
        *number = static_cast<std::int32_t>(session_->History().NumberOf(event));
    });
}

HRESULT TraceService::GetHistoryName(std::uint32_t history, BSTR* name) {
    return WithEntry(session_.get(), history, name, [&](std::uint32_t event) {
        *name = ToBstr(session_->Texts().CallName(event));
    });
}

HRESULT TraceService::GetHistoryParameter(std::uint32_t history, BSTR* text) {
    return WithEntry(session_.get(), history, text, [&](std::uint32_t event) {
        *text = ToBstr(session_->Texts().Parameters(event));
    });
}

HRESULT TraceService::GetHistoryReturnParameter(std::uint32_t history, BSTR* text) {
    return WithEntry(session_.get(), history, text, [&](std::uint32_t event) {
        *text = ToBstr(session_->Texts().ReturnText(event));
    });
}

HRESULT TraceService::GetHistoryTime(std::uint32_t history, std::int64_t* time) {
    return WithEntry(session_.get(), history, time,
                     [&](std::uint32_t event) { *time = session_->Events().Time(event); });
}

}  // namespace kvx::service
