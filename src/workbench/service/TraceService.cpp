#include "workbench/service/TraceService.h"

#include <algorithm>
#include <utility>

#include "host/Identifiers.h"
#include "platform/base/Guarded.h"
#include "workbench/service/TraceSession.h"

namespace kvx::service {

TraceService::TraceService() = default;
TraceService::~TraceService() = default;

void TraceService::SetRecording(std::unique_ptr<Recording> recording) {
    session_ = recording ? std::make_unique<TraceSession>(std::move(recording)) : nullptr;
}

const Recording* TraceService::GetRecording() const {
    return session_ ? &session_->GetRecording() : nullptr;
}

bool TraceService::ShowProcessor(std::uint32_t processor) {
    return session_ && session_->ShowProcessor(processor);
}

std::uint32_t TraceService::ShownProcessor() const {
    return session_ ? session_->ShownProcessor() : 0;
}

LineArrangement TraceService::Lines() const {
    return session_ ? session_->Lines().Arrangement(session_->Contexts()) : LineArrangement();
}

void TraceService::ArrangeLines(LineArrangement arrangement) {
    if (session_) session_->Lines().Arrange(session_->Contexts(), std::move(arrangement));
}

LossCounters TraceService::Losses() const {
    return session_ ? session_->Decoded().Losses() : LossCounters();
}

std::shared_ptr<const DecodedRecording> TraceService::ShareDecoded() const {
    return session_ ? session_->Share() : nullptr;
}

const DecodedRecording* TraceService::Decoded() const {
    return session_ ? &session_->Decoded() : nullptr;
}

Summary TraceService::Summarize() {
    if (!session_) return {};
    session_->ShowThrough(session_->GetRecording().RecordCount());
    Summary summary = service::Summarize(session_->Decoded());
    summary.shownProcessor = session_->ShownProcessor();
    return summary;
}

HRESULT TraceService::QueryInterface(const GUID& id, void** out) {
    if (!out) return E_POINTER;
    if (id == IID_IUnknown || id == host::kOSTraceService)
        *out = static_cast<IQOSTraceService*>(this);
    else if (id == host::kOSTraceAvailability)
        *out = static_cast<IQOSTraceAvailability*>(this);
    else if (id == host::kOSTraceColumns)
        *out = static_cast<IQOSTraceColumns*>(this);
    else {
        *out = nullptr;
        return E_NOINTERFACE;
    }
    return S_OK;
}

HRESULT TraceService::IsTraceAvailable(VARIANT_BOOL* yes) {
    if (!yes) return E_POINTER;
    *yes = session_ ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

// A trace read from a file is not being recorded: stopping it changes nothing, and it cannot be
// started.
HRESULT TraceService::StopMeasurement() {
    return measurement_ ? measurement_->Stop() : S_FALSE;
}

HRESULT TraceService::ResetMeasurement() {
    return measurement_ ? measurement_->Reset() : S_FALSE;
}

HRESULT TraceService::StartMeasurement() {
    return measurement_ ? measurement_->Start() : E_NOTIMPL;
}

HRESULT TraceService::GetRangeCondition(std::int32_t* condition) {
    if (!condition) return E_POINTER;
    *condition = measurement_ ? measurement_->GetRangeCondition() : range_;
    return S_OK;
}

HRESULT TraceService::SetRangeCondition(std::int32_t condition) {
    if (condition != kRangeFull && condition != kRangeFree) return E_INVALIDARG;
    if (measurement_) return measurement_->SetRangeCondition(condition);
    range_ = condition;
    return S_OK;
}

// Views attach before a trace is opened, and one view may always look.
HRESULT TraceService::Attach() {
    return S_OK;
}
HRESULT TraceService::Detach() {
    return S_OK;
}
HRESULT TraceService::ViewClosed() {
    return S_OK;
}
HRESULT TraceService::Reserved53() {
    return E_NOTIMPL;
}

HRESULT TraceService::GetRecordRange(std::int32_t* first, std::int32_t* last, std::int64_t* start,
                                     std::int64_t* end) {
    if (!first || !last || !start || !end) return E_POINTER;
    if (!session_) return E_FAIL;
    const Recording& recording = session_->GetRecording();
    *first = 0;
    *last = static_cast<std::int32_t>(recording.RecordCount()) - 1;
    *start = recording.FirstTime();
    *end = recording.LastTime();
    return S_OK;
}

HRESULT TraceService::AnalyzeRecords(std::int32_t from, std::int32_t to, std::int64_t* a,
                                     std::int64_t* b, std::int64_t* c) {
    if (!a || !b || !c) return E_POINTER;
    if (!session_) return E_FAIL;
    if (from < 0 || to < from) return E_INVALIDARG;
    return Guarded([&] {
        const auto last = static_cast<std::uint32_t>(to);
        session_->ShowThrough(last);
        *a = *b = *c = session_->Decoded().WaitFor(last);
        return S_OK;
    });
}

HRESULT TraceService::AnalyzeUntil(std::int32_t from, std::int32_t to, double until,
                                   std::int32_t* last, std::int64_t* a, std::int64_t* b,
                                   std::int64_t* c) {
    if (!last || !a || !b || !c) return E_POINTER;
    if (!session_) return E_FAIL;
    if (from < 0 || to < from) return E_INVALIDARG;
    return Guarded([&] {
        const auto reached = session_->ShowThrough(static_cast<std::uint32_t>(to), until);
        *last = std::min(static_cast<std::int32_t>(reached), to);
        *a = *b = *c = session_->Now();
        return S_OK;
    });
}

HRESULT TraceService::EndAnalysis() {
    return S_OK;
}

HRESULT TraceService::DiscardData() {
    if (!session_) return S_OK;
    return Guarded([&] {
        session_->Discard();
        return S_OK;
    });
}

HRESULT TraceService::TimeToCount(std::int64_t* count, std::int32_t h, std::int32_t m,
                                  std::int32_t s, std::int32_t ms, std::int32_t us,
                                  std::int32_t ns) {
    if (!count) return E_POINTER;
    if (!session_ || !session_->GetRecording().Clock().Known()) return E_FAIL;
    *count = session_->GetRecording().Clock().ToCount({h, m, s, ms, us, ns});
    return S_OK;
}

HRESULT TraceService::CountToTime(std::int64_t count, std::int32_t* h, std::int32_t* m,
                                  std::int32_t* s, std::int32_t* ms, std::int32_t* us,
                                  std::int32_t* ns) {
    if (!h || !m || !s || !ms || !us || !ns) return E_POINTER;
    if (!session_ || !session_->GetRecording().Clock().Known()) return E_FAIL;
    const TimeFields fields = session_->GetRecording().Clock().ToFields(count);
    *h = fields.h;
    *m = fields.m;
    *s = fields.s;
    *ms = fields.ms;
    *us = fields.us;
    *ns = fields.ns;
    return S_OK;
}

HRESULT TraceService::GetTimeMode(std::int32_t* mode) {
    if (!mode) return E_POINTER;
    if (!session_) return E_FAIL;
    switch (session_->GetRecording().Clock().Unit()) {
        case TimeUnit::Counts:
            *mode = kTimeCycles;
            break;
        case TimeUnit::Seconds:
        case TimeUnit::Milliseconds:
            *mode = kTimeMilliseconds;
            break;
        case TimeUnit::Microseconds:
            *mode = kTimeMicroseconds;
            break;
        case TimeUnit::Nanoseconds:
            *mode = kTimeNanoseconds;
            break;
    }
    return S_OK;
}

HRESULT TraceService::QueryCapability(std::int32_t code, VARIANT_BOOL* yes) {
    if (!yes) return E_POINTER;
    const auto clock = session_ ? session_->GetRecording().Clock() : TraceClock();
    bool has = false;
    if (code == kCapabilityVariablePools) has = true;
    if (code == kCapabilityNanoseconds) has = clock.HasNanoseconds();
    if (code == kCapabilityTime) has = clock.Known();
    *yes = has ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

}  // namespace kvx::service
