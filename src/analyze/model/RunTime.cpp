#include "analyze/model/RunTime.h"

#include <algorithm>
#include <utility>

#include "analyze/model/SortKeys.h"
#include "trace/ContextMng.h"
#include "trace/EventReader.h"
#include "trace/TimeCount.h"
#include "traceview/model/Marker.h"

void CRunTime::Add(double d, std::uint32_t event, double range) {
    ++Num;
    Total += d;
    maxEvents.NoteLongest(Max, d, event);
    minEvents.NoteShortest(Min, d, event);
    Avg = Total / Num;
    if (range != 0.0) Ratio = Total / range;
}

void CRunTimeAnalysis::SetShared(COSMarker* marker, CContextMng* contexts) {
    marker_ = marker;
    contexts_ = contexts;
}

void CRunTimeAnalysis::Clear() {
    records_.clear();
    rows_.clear();
}

const CRunTime* CRunTimeAnalysis::Find(std::uint32_t context) const {
    // Records stand at their line as far as the context table reached.
    if (context < records_.size() && records_[context].context == context)
        return &records_[context];
    const auto at = std::find_if(records_.begin(), records_.end(),
                                 [context](const CRunTime& r) { return r.context == context; });
    return at == records_.end() ? nullptr : &*at;
}

CRunTime* CRunTimeAnalysis::Find(std::uint32_t context) {
    return const_cast<CRunTime*>(std::as_const(*this).Find(context));
}

CRunTime& CRunTimeAnalysis::FindOrAdd(std::uint32_t context) {
    if (CRunTime* const found = Find(context)) return *found;
    CRunTime& added = records_.emplace_back();
    added.context = context;
    added.marker = marker_;
    return added;
}

void CRunTimeAnalysis::Build() {
    records_.clear();
    IQOSTraceService* const service = source_.Service();
    if (!service) return;
    const bool rebuildRows = marker_->IsRebuildRows();
    if (rebuildRows) {
        rows_.clear();
        if (!marker_->IsKeepSort()) sort_.Reset();
    }
    for (int line = 0; line < contexts_->GetCount(); ++line) {
        FindOrAdd(static_cast<std::uint32_t>(line));
        if (rebuildRows) rows_.push_back({line, kvx::kDescending});
    }
    if (const auto range = marker_->Range(); range.start == range.end) return;
    kvx::WithEvents(*service, [this](const auto& events) { CreditRange(events); });
    if (marker_->IsKeepSort() && sort_.Column() != -1) Sort(sort_.Column(), 1);
}

template <class Events>
void CRunTimeAnalysis::CreditRange(const Events& events) {
    if (events.Count() == 0) return;
    const kvx::AnalysisRange range = marker_->Range();
    const double start = range.start;
    const double end = range.end;
    const auto credit = [&](std::uint32_t remembered, std::uint32_t dispatch) {
        const double t0 = events.Time(dispatch);
        double t1 = events.EndTime(dispatch);
        if (t0 >= end) return;
        if (t1 == 0.0) t1 = end;
        if (t1 <= start) return;
        const double length = std::min(t1, end) - std::max(t0, start);
        FindOrAdd(events.Next(dispatch)).Add(length, remembered, end - start);
    };

    if (range.first != 0) {
        // The run that the start of the range cuts.
        if (const auto cut = events.LastDispatch(range.first - 1)) credit(range.first, *cut);
    }
    events.ForEachDispatch(range.first, range.last, [&](std::uint32_t e) { credit(e, e); });
}

void CRunTimeAnalysis::Sort(int column, int again) {
    const auto direction = sort_.Begin(column, again);
    if (!direction) return;
    kvx::SortRows(rows_, *direction,
                  [&](const SRunTimeSortInfo& row) { return Key(row.index, column); });
}

CString CRunTimeAnalysis::Key(int line, int column) const {
    if (column >= Num) {
        const CRunTime* const record = Find(static_cast<std::uint32_t>(line));
        return record ? ValueKey(*record, column) : CString();
    }
    if (line >= contexts_->GetCount()) return {};
    const bool handler = contexts_->GetType(line) == kContextHandler;
    const int number = contexts_->GetNumber(line);
    const bool task = contexts_->GetType(line) == kContextTask && number != 0;
    if (column == Name) return ' ' + contexts_->GetShownName(line);
    if (column == Vec && handler) return kvx::NumberKey(std::int64_t{number});
    if (column == Table && handler)
        return kvx::NumberKey(std::int64_t{contexts_->GetTableAddress(line)});
    if (column == Id && task) return kvx::NumberKey(std::int64_t{number});
    return {};
}

CString CRunTimeAnalysis::ValueKey(const CRunTime& record, int column) const {
    switch (column) {
        case Num:
            return kvx::NumberKey(std::int64_t{record.Num});
        case Max:
            return kvx::NumberKey(kvx::ToCount(record.Max));
        case Min:
            return kvx::NumberKey(kvx::ToCount(record.Min));
        case Avg:
            return kvx::NumberKey(kvx::ToCount(record.Avg));
        case Total:
            return kvx::NumberKey(kvx::ToCount(record.Total));
        default:
            return kvx::NumberKey(record.Ratio);
    }
}
