// The part of the trace service that answers about contexts and events.

#include "platform/base/Guarded.h"
#include "workbench/service/TraceService.h"
#include "workbench/service/TraceSession.h"

namespace kvx::service {
namespace {

// Calls read with the events, where there is such an event.
template <class Read>
HRESULT WithEvent(TraceSession* session, std::uint32_t event, const void* out, Read read) {
    if (!out) return E_POINTER;
    if (!session || event >= session->EventCount()) return E_FAIL;
    return Guarded([&] {
        read(session->Events());
        return S_OK;
    });
}

std::int32_t LineOf(TraceSession& session, std::uint32_t context) {
    return static_cast<std::int32_t>(session.Lines().LineOf(context));
}

host::EventList StatesOf(TraceSession& session, std::uint32_t line) {
    return session.Events().StatesOf(session.Lines().ContextAt(line), session.EventCount());
}

VARIANT_BOOL ToBool(bool yes) {
    return yes ? VARIANT_TRUE : VARIANT_FALSE;
}

// Takes the line indexes out of a VT_ARRAY | VT_UINT value and shows or hides those lines.
HRESULT SetShown(TraceSession* session, const VARIANT& lines, bool shown) {
    if (!session) return E_FAIL;
    if (lines.vt != (VT_ARRAY | VT_UINT) || !lines.parray) return E_INVALIDARG;
    const SAFEARRAY* array = lines.parray;
    return Guarded([&] {
        HRESULT status = S_OK;
        for (std::uint32_t i = 0; i < SafeArrayGetCount(array); ++i) {
            const VARIANT* element = SafeArrayElement(array, i);
            const bool done = element && element->vt == VT_UINT &&
                              session->Lines().SetShown(element->uintVal, shown);
            if (!done) status = E_INVALIDARG;
        }
        return status;
    });
}

}  // namespace

std::string TraceService::EventDetail(std::uint32_t event) const {
    const bool shown = session_ && event < session_->EventCount();
    return shown ? session_->Texts().Detail(event) : std::string();
}

std::string TraceService::Check() const {
    if (!session_) return {};
    session_->Decoded().WaitForAll();
    for (const auto& timeline : session_->Decoded().Timelines())
        if (auto fault = timeline->events.Check(); !fault.empty()) return fault;
    return {};
}

std::string TraceService::LineName(std::int32_t line) const {
    if (!session_ || line < 0 || static_cast<std::uint32_t>(line) >= session_->Lines().Count())
        return {};
    const auto context = session_->Lines().ContextAt(static_cast<std::uint32_t>(line));
    return session_->Contexts().DisplayName(context);
}

HRESULT TraceService::GetColumns(host::OSTraceColumns* out) {
    if (!out) return E_POINTER;
    if (!session_) return E_FAIL;
    return Guarded([&] {
        const LineOrder& lines = session_->Lines();
        const auto contexts = lines.Count();
        const auto& lists = session_->ListsOfContexts(contexts);
        session_->Events().Export(*out, session_->EventCount());
        out->contextCount = contexts;
        out->stateEvents = lists.events.data();
        out->dispatchesTo = out->stateEvents + contexts;
        out->sysCallsOf = out->dispatchesTo + contexts;
        out->stateLevels = lists.levels.data();
        out->dispatchesToLevels = out->stateLevels + contexts;
        out->sysCallsOfLevels = out->dispatchesToLevels + contexts;
        out->lineOfContext = lines.LinesOfContexts();
        return S_OK;
    });
}

HRESULT TraceService::GetContextCount(std::int32_t* count) {
    if (!count) return E_POINTER;
    if (!session_) return E_FAIL;
    return Guarded([&] {
        *count = static_cast<std::int32_t>(session_->Lines().Count());
        return S_OK;
    });
}

HRESULT TraceService::GetContextData(std::int32_t line, _tagSContextData* out) {
    if (!out) return E_POINTER;
    if (!session_) return E_FAIL;
    return Guarded([&] {
        const auto index = static_cast<std::uint32_t>(line);
        if (line < 0 || index >= session_->Lines().Count()) return E_INVALIDARG;
        const Context& context = session_->Contexts().Get(session_->Lines().ContextAt(index));
        out->type = context.type;
        out->number = context.number;
        out->tableAddress = context.tableAddress;
        out->name = ToBstr(context.name);
        out->hatched = context.IsIdle() ? 1 : 0;
        out->sysCallProcess = 0;
        out->shown = session_->Lines().IsShown(index) ? 1 : 0;
        return S_OK;
    });
}

HRESULT TraceService::MoveContext(std::int32_t from, std::int32_t to) {
    if (!session_) return E_FAIL;
    return Guarded([&] { return session_->Lines().Move(from, to) ? S_OK : E_INVALIDARG; });
}

HRESULT TraceService::ResetContextOrder() {
    if (!session_) return E_FAIL;
    return Guarded([&] {
        session_->Lines().Reset(session_->Contexts());
        return S_OK;
    });
}

HRESULT TraceService::ShowContext(VARIANT lines) {
    return SetShown(session_.get(), lines, true);
}

HRESULT TraceService::HideContext(VARIANT lines) {
    return SetShown(session_.get(), lines, false);
}

HRESULT TraceService::GetEventCount(std::uint32_t* count) {
    if (!count) return E_POINTER;
    if (!session_) return E_FAIL;
    *count = session_->EventCount();
    return S_OK;
}

HRESULT TraceService::GetEventKind(std::uint32_t event, std::int32_t* kind) {
    return WithEvent(session_.get(), event, kind,
                     [&](const EventStore& events) { *kind = events.Kind(event); });
}

HRESULT TraceService::GetEventTime(std::uint32_t event, std::int64_t* time) {
    return WithEvent(session_.get(), event, time,
                     [&](const EventStore& events) { *time = events.Time(event); });
}

HRESULT TraceService::GetEventEndTime(std::uint32_t event, std::int64_t* time) {
    return WithEvent(session_.get(), event, time, [&](const EventStore& events) {
        const auto end =
            events.Kind(event) == kEventSysCall ? host::kOpenEnd : events.EndEvent(event);
        const bool open = end == host::kOpenEnd;
        *time = open ? 0 : events.Time(end);
        if (!open && *time == 0) *time = host::kEndAtZero;
    });
}

HRESULT TraceService::GetEventTipText(std::uint32_t event, BSTR* text) {
    return WithEvent(session_.get(), event, text,
                     [&](const EventStore&) { *text = ToBstr(session_->Texts().Tip(event)); });
}

HRESULT TraceService::GetEventContext(std::uint32_t event, std::int32_t* line) {
    return WithEvent(session_.get(), event, line, [&](const EventStore& events) {
        *line = LineOf(*session_, events.Context(event));
    });
}

HRESULT TraceService::GetEventNextContext(std::uint32_t event, std::int32_t* line) {
    return WithEvent(session_.get(), event, line, [&](const EventStore& events) {
        const bool dispatch = events.Kind(event) == kEventDispatch;
        *line = LineOf(*session_, dispatch ? events.Next(event) : events.Context(event));
    });
}

HRESULT TraceService::GetEventState(std::uint32_t event, std::int32_t* state) {
    if (!session_ || event >= session_->EventCount() ||
        session_->Events().Kind(event) != kEventState)
        return E_FAIL;
    return WithEvent(session_.get(), event, state,
                     [&](const EventStore& events) { *state = events.Code(event); });
}

HRESULT TraceService::GetEventStateContext(std::uint32_t event, std::int32_t* line) {
    if (!session_ || event >= session_->EventCount() ||
        session_->Events().Kind(event) != kEventState)
        return E_FAIL;
    return GetEventContext(event, line);
}

HRESULT TraceService::IsEventSuspended(std::uint32_t event, VARIANT_BOOL* yes) {
    return WithEvent(session_.get(), event, yes, [&](const EventStore& events) {
        *yes = ToBool(events.Flags(event) & host::kFlagSuspended);
    });
}

HRESULT TraceService::IsEventPaused(std::uint32_t event, VARIANT_BOOL* yes) {
    return WithEvent(session_.get(), event, yes, [&](const EventStore& events) {
        *yes = ToBool(events.Flags(event) & host::kFlagPaused);
    });
}

HRESULT TraceService::GetContextEventCount(std::int32_t line, std::uint32_t* count) {
    if (!count) return E_POINTER;
    if (!session_) return E_FAIL;
    return Guarded([&] {
        const auto index = static_cast<std::uint32_t>(line);
        if (line < 0 || index >= session_->Lines().Count()) return E_INVALIDARG;
        *count = StatesOf(*session_, index).count;
        return S_OK;
    });
}

HRESULT TraceService::GetContextEvent(std::int32_t line, std::uint32_t number,
                                      std::uint32_t* event) {
    if (!event) return E_POINTER;
    std::uint32_t count = 0;
    const HRESULT status = GetContextEventCount(line, &count);
    if (Failed(status)) return status;
    if (number >= count) return E_INVALIDARG;
    *event = StatesOf(*session_, static_cast<std::uint32_t>(line)).events[number];
    return S_OK;
}

HRESULT TraceService::GetContextEventTime(std::int32_t line, std::uint32_t number,
                                          std::int64_t* time) {
    if (!time) return E_POINTER;
    std::uint32_t event = 0;
    const HRESULT status = GetContextEvent(line, number, &event);
    return Failed(status) ? status : GetEventTime(event, time);
}

// The mark of a system call stands where it was issued.
HRESULT TraceService::GetSysCallEvent(std::uint32_t event, std::uint32_t* timed) {
    if (!session_ || event >= session_->EventCount() ||
        session_->Events().Kind(event) != kEventSysCall)
        return E_FAIL;
    return WithEvent(session_.get(), event, timed, [&](const EventStore&) { *timed = event; });
}

HRESULT TraceService::GetSysCallClass(std::uint32_t event, std::int32_t* cls) {
    if (!session_ || event >= session_->EventCount() ||
        session_->Events().Kind(event) != kEventSysCall)
        return E_FAIL;
    return WithEvent(session_.get(), event, cls,
                     [&](const EventStore& events) { *cls = events.Code(event); });
}

}  // namespace kvx::service
