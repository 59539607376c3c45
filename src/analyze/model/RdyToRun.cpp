#include "analyze/model/RdyToRun.h"

#include <utility>

#include "analyze/model/ReadyLookBack.h"
#include "analyze/model/SortKeys.h"
#include "platform/Text.h"
#include "trace/ContextMng.h"
#include "trace/EventReader.h"
#include "trace/TimeCount.h"
#include "traceview/model/Marker.h"

void CRdyToRun::Add(double d, std::uint32_t event) {
    ++measured;
    maxEvents.NoteLongest(Max, d, event);
    minEvents.NoteShortest(Min, d, event);
    Total += d;
    Avg = Total / measured;
}

void CRdyToRunAnalysis::SetShared(COSMarker* marker, CContextMng* contexts) {
    marker_ = marker;
    contexts_ = contexts;
}

void CRdyToRunAnalysis::Clear() {
    records_.clear();
    recordOfLine_.clear();
    rows_.clear();
}

CRdyToRun* CRdyToRunAnalysis::Find(std::uint32_t context) {
    if (context >= recordOfLine_.size()) return nullptr;
    return Record(recordOfLine_[context]);
}

CRdyToRun* CRdyToRunAnalysis::Record(int n) {
    return const_cast<CRdyToRun*>(std::as_const(*this).Record(n));
}

const CRdyToRun* CRdyToRunAnalysis::Record(int n) const {
    if (n < 0 || n >= RecordCount()) return nullptr;
    return &records_[static_cast<std::size_t>(n)];
}

void CRdyToRunAnalysis::Build() {
    records_.clear();
    recordOfLine_.clear();
    IQOSTraceService* const service = source_.Service();
    if (!service) return;
    if (marker_->IsRebuildRows()) {
        rows_.clear();
        if (!marker_->IsKeepSort()) sort_.Reset();
    }
    AddTasks();
    kvx::WithEvents(*service, [this](const auto& events) { CreditRange(events); });
    if (marker_->IsKeepSort() && sort_.Column() != -1) Sort(sort_.Column(), 1);
}

void CRdyToRunAnalysis::AddTasks() {
    recordOfLine_.assign(static_cast<std::size_t>(contexts_->GetCount()), -1);
    for (int line = 0; line < contexts_->GetCount(); ++line) {
        if (contexts_->GetType(line) != kContextTask || contexts_->GetNumber(line) == 0) continue;
        const int position = RecordCount();
        recordOfLine_[static_cast<std::size_t>(line)] = position;
        CRdyToRun& record = records_.emplace_back();
        record.context = static_cast<std::uint32_t>(line);
        record.marker = marker_;
        if (marker_->IsRebuildRows()) rows_.push_back({position, kvx::kDescending});
    }
}

template <class Events>
void CRdyToRunAnalysis::CreditRange(const Events& events) {
    if (events.Count() == 0) return;
    const kvx::AnalysisRange range = marker_->Range();
    kvx::ReadyLookBack<Events> before(events, range.first);
    for (std::uint32_t e = range.first; e < range.waitsBelow; ++e) {
        const int kind = events.Kind(e);
        if (kind == kEventState) {
            if (CRdyToRun* const record = Find(events.StateContext(e))) {
                record->stateKnown = true;
                record->canBeReady = events.IsReady(e);
                record->readySince = record->canBeReady ? events.Time(e) : 0.0;
            }
        } else if (kind == kEventDispatch) {
            const double t = events.Time(e);
            if (CRdyToRun* const left = Find(events.Context(e))) Leave(*left, t, before);
            if (CRdyToRun* const entered = Find(events.Next(e))) Credit(*entered, e, t, before);
        }
    }
}

// The task lost the processor at time t. That makes it ready unless it waits, is suspended or
// dormant, or nothing is known of it.
template <class LookBack>
void CRdyToRunAnalysis::Leave(CRdyToRun& record, double t, LookBack& before) {
    const bool ready = record.stateKnown ? record.canBeReady : before.CanBeReady(record.context);
    record.readySince = ready ? t : 0.0;
}

// The end of one wait, at time t of the dispatch.
template <class LookBack>
void CRdyToRunAnalysis::Credit(CRdyToRun& record, std::uint32_t dispatch, double t,
                               LookBack& before) {
    ++record.Num;
    std::uint32_t remembered = dispatch;
    if (record.readySince == 0.0 && !record.stateKnown) {
        if (const auto ready = before.Find(record.context)) {
            remembered = *ready;
            record.readySince = before.Reader().Time(*ready);
        }
    }
    if (record.readySince != 0.0) record.Add(t - record.readySince, remembered);
    record.readySince = 0.0;
}

void CRdyToRunAnalysis::Sort(int column, int again) {
    const auto direction = sort_.Begin(column, again);
    if (!direction) return;
    kvx::SortRows(rows_, *direction, [&](const SRdySortInfo& row) {
        const CRdyToRun* const record = Record(row.index);
        return record ? Key(*record, column) : CString();
    });
}

CString CRdyToRunAnalysis::Key(const CRdyToRun& record, int column) const {
    const int line = static_cast<int>(record.context);
    const int number = line < contexts_->GetCount() ? contexts_->GetNumber(line) : 0;
    switch (column) {
        case Id:
            return number != 0 ? kvx::NumberKey(std::int64_t{number}) : CString();
        case Name:
            return line < contexts_->GetCount() ? contexts_->GetShownName(line) : CString();
        case Num:
            return kvx::NumberKey(std::int64_t{record.Num});
        case Max:
            return kvx::NumberKey(kvx::ToCount(record.Max));
        case Min:
            return kvx::NumberKey(kvx::ToCount(record.Min));
        default:
            return kvx::NumberKey(kvx::ToCount(record.Avg));
    }
}
