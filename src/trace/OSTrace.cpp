#include "trace/OSTrace.h"

#include <algorithm>
#include <limits>
#include <mutex>

#include "analyze/model/SharedAnalysis.h"
#include "platform/base/Text.h"
#include "trace/AnalysisDialog.h"
#include "trace/ContextMng.h"
#include "trace/EventReader.h"
#include "trace/TimeCount.h"
#include "trace/TimeSearch.h"
#include "traceview/model/Marker.h"

namespace {

// Records decoded by Open.
constexpr int kRecordsOnOpen = 300;
// STOP is polled once in so many records.
constexpr int kPollInterval = 302;

bool HasCapability(IQOSTraceService& service, std::int32_t code) {
    VARIANT_BOOL yes = VARIANT_FALSE;
    return Succeeded(service.QueryCapability(code, &yes)) && yes == VARIANT_TRUE;
}

}  // namespace

void COSTrace::EmptyAnalyses() {
    for (kvx::SharedAnalysis* const analysis : shared_.analyses) analysis->Clear();
}

void COSTrace::Clear(IViewSender* sender, int resetService) {
    valid_ = 0;
    IQOSTraceService* const service = source_.Service();
    if (!service) return;
    {
        const std::lock_guard guard(*shared_.lock);
        if (resetService == 1) service->DiscardData();
        shared_.contexts->Clear();
        EmptyAnalyses();
        shared_.markers->Reset();
        lastAnalysed_ = firstRecord_ = lastRecord_ = 0;
        analysedUpTo_ = firstEventTime_ = traceEnd_ = covered_ = 0.0;
    }
    source_.BroadcastDisplayChanged(sender);
}

void COSTrace::Discard(IViewSender* sender) {
    valid_ = 0;
    IQOSTraceService* const service = source_.Service();
    if (!service) return;
    service->DiscardData();
    EmptyAnalyses();
    source_.BroadcastDisplayChanged(sender);
}

int COSTrace::CloseAfterFailure(IViewSender* sender) {
    Clear(sender, 1);
    return 0;
}

int COSTrace::Open(IViewSender* sender) {
    valid_ = 0;
    IQOSTraceService* const service = source_.Service();
    if (!service) return 0;
    if (!source_.HasTrace()) return CloseAfterFailure(sender);

    std::int64_t start = 0;
    std::int64_t end = 0;
    if (Failed(service->GetRecordRange(&firstRecord_, &lastRecord_, &start, &end)))
        return CloseAfterFailure(sender);
    traceEnd_ = static_cast<double>(end);
    service->GetRangeCondition(&rangeCondition_);

    const std::int64_t distance = std::int64_t{lastRecord_} - firstRecord_;
    const std::int64_t records = (distance < 0 ? -distance : distance) + 1;
    const std::int32_t to =
        records >= kRecordsOnOpen ? firstRecord_ + kRecordsOnOpen - 1 : lastRecord_;
    std::int64_t a = 0;
    std::int64_t b = 0;
    std::int64_t c = 0;
    if (Failed(service->AnalyzeRecords(firstRecord_, to, &a, &b, &c)))
        return CloseAfterFailure(sender);
    analysedUpTo_ = static_cast<double>(b);
    covered_ = static_cast<double>(c);
    lastAnalysed_ = to;
    service->EndAnalysis();
    valid_ = 1;

    std::int64_t first = 0;
    service->GetEventTime(0, &first);
    firstEventTime_ = static_cast<double>(first);
    source_.BroadcastDisplayChanged(sender);
    return 1;
}

// Decodes the records up to to, at most until one's analysed-up-to time exceeds target: true then.
// A record that the service cannot decode counts as decoded.
bool COSTrace::DecodeBlock(IQOSTraceService& service, std::int32_t to, double target,
                           kvx::AnalysisDialog& dialog) {
    kvx::host::IQOSTraceColumns* const bulk = kvx::QueryColumns(service);
    auto a = kvx::ToCount(analysedUpTo_);
    auto b = a;
    auto c = kvx::ToCount(covered_);
    while (lastAnalysed_ < to) {
        const std::int32_t from = lastAnalysed_ + 1;
        std::int32_t last = from;
        if (!bulk || Failed(bulk->AnalyzeUntil(from, to, target, &last, &a, &b, &c)))
            service.AnalyzeRecords(from, from, &a, &b, &c);
        last = std::clamp(last, from, to);
        analysedUpTo_ = static_cast<double>(b);
        covered_ = static_cast<double>(c);
        lastAnalysed_ = last;
        dialog.Show(a);
        if (analysedUpTo_ > target) return true;
    }
    return false;
}

// False when the user stopped.
bool COSTrace::Decode(IQOSTraceService& service, double target, kvx::AnalysisDialog& dialog,
                      int* advanced) {
    while (lastAnalysed_ < lastRecord_) {
        const std::int64_t whole = std::int64_t{lastAnalysed_} + kPollInterval;
        const auto to = static_cast<std::int32_t>(std::min<std::int64_t>(whole, lastRecord_));
        *advanced = 1;
        if (DecodeBlock(service, to, target, dialog)) return true;
        if (to == whole && dialog.IsStopped()) return false;
    }
    return true;
}

int COSTrace::AnalyzeUpTo(IViewSender* view, double target, int* advanced) {
    *advanced = 0;
    IQOSTraceService* const service = source_.Service();
    if (!service) return 0;
    const bool covered = target <= analysedUpTo_ || target <= covered_;
    if (!valid_ || covered || lastAnalysed_ >= lastRecord_) return 1;

    kvx::AnalysisDialog dialog(view, analysedUpTo_, target);
    const bool finished = Decode(*service, target, dialog, advanced);
    service->EndAnalysis();
    dialog.Close();
    source_.BroadcastDisplayChanged(view);
    return finished ? 1 : 0;
}

// The later of the last system call decoded and the event after the indicator.
std::uint32_t COSTrace::SearchStart(IQOSTraceService& service) const {
    const std::uint32_t indicator = shared_.markers->GetMarkerEvent(kMarkerIndicator);
    const auto last = kvx::WithEvents(service, [](const auto& e) { return e.LastSysCall(); });
    return last > indicator ? last : indicator + 1;
}

int COSTrace::AnalyzeRestAndSearch(IViewSender* view, int* found, std::uint32_t* result) {
    *found = 0;
    IQOSTraceService* const service = source_.Service();
    if (!service || !valid_ || lastAnalysed_ >= lastRecord_) return 0;

    kvx::AnalysisDialog dialog(view, analysedUpTo_, traceEnd_);
    const std::uint32_t from = SearchStart(*service);
    int advanced = 0;
    Decode(*service, std::numeric_limits<double>::infinity(), dialog, &advanced);
    if (Succeeded(service->SearchNext(from - 1, result))) *found = 1;
    if (advanced) service->EndAnalysis();
    return advanced;
}

int COSTrace::GetTimes(double* first, double* end, double* analysed) const {
    if (!valid_) return 0;
    *first = firstEventTime_;
    *end = traceEnd_;
    *analysed = analysedUpTo_;
    return 1;
}

int COSTrace::GetStatus() {
    IQOSTraceService* const service = source_.Service();
    if (!service) return kRangeFull;
    service->GetRangeCondition(&rangeCondition_);
    return rangeCondition_;
}

void COSTrace::FormatTime(double t, CString& text) const {
    IQOSTraceService* const service = source_.Service();
    if (!service) return;
    if (!HasCapability(*service, kCapabilityTime)) {
        text = kvx::FormatText("%.0f", t);
        return;
    }
    std::int32_t h = 0, m = 0, s = 0, ms = 0, us = 0, ns = 0;
    if (Failed(service->CountToTime(kvx::ToCount(t), &h, &m, &s, &ms, &us, &ns))) return;
    text = kvx::FormatText("%02d:%02d:%02d.%03d.%03d", h, m, s, ms, us);
    if (HasCapability(*service, kCapabilityNanoseconds)) text += kvx::FormatText(".%03d", ns);
}

std::uint32_t COSTrace::FindEventNear(double t) const {
    IQOSTraceService* const service = source_.Service();
    if (!service) return 0;
    const kvx::PlainEvents events(*service);
    return kvx::FindNear(events.Count(), t, [&](std::uint32_t e) { return events.Time(e); });
}

std::uint32_t COSTrace::FindDispatchBefore(double t) const {
    IQOSTraceService* const service = source_.Service();
    if (!service) return 0;
    return kvx::WithEvents(*service, [t](const auto& events) {
        const auto time = [&](std::uint32_t e) { return events.Time(e); };
        const std::uint32_t count = events.Count();
        if (count == 0) return 0u;
        const std::uint32_t near = kvx::FindNear(count, t, time);
        const std::uint32_t end = std::min(near + kvx::kNearSpan, count);
        const std::uint32_t at = kvx::ScanFrom(near, end, t, time);
        const std::uint32_t before = at == end ? end - 1 : at - (at ? 1 : 0);
        return events.LastDispatch(before).value_or(0);
    });
}

void COSTrace::GetContextEventRange(double t, int line, std::uint32_t* first,
                                    std::uint32_t* last) const {
    *first = *last = 0;
    IQOSTraceService* const service = source_.Service();
    if (!service) return;
    std::uint32_t count = 0;
    service->GetContextEventCount(line, &count);
    if (count == 0) return;
    *last = count - 1;

    // The line's first state holds from before its event: its time is never later than t.
    const auto time = [&](std::uint32_t j) {
        std::int64_t at = 0;
        service->GetContextEventTime(line, j, &at);
        const auto counted = static_cast<double>(at);
        return j == 0 && counted > t ? static_cast<double>(kvx::ToCount(t)) : counted;
    };
    const std::uint32_t near = kvx::FindNear(count, t, time);
    const std::uint32_t end = std::min(near + kvx::kNearSpan, count);
    const std::uint32_t at = kvx::ScanFrom(near, end, t, time);
    if (at != end && at != 0) *first = at - 1;
}
