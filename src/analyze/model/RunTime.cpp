#include "analyze/model/RunTime.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/base/Text.h"
#include "trace/ContextMng.h"
#include "trace/EventReader.h"
#include "trace/OSTrace.h"
#include "trace/TimeCount.h"
#include "traceview/model/Marker.h"

void CRunTime::Add(double d, std::uint32_t event) {
    ++Num;
    Total += d;
    maxEvents.NoteLongest(Max, d, event);
    minEvents.NoteShortest(Min, d, event);
}

void CRunTime::Conclude(double range) {
    if (Num == 0) return;
    Avg = Total / Num;
    if (range != 0.0) Ratio = Total / range;
}

namespace {

using enum kvx::ValueKind;

constexpr kvx::AnalysisColumn kColumnsOfTable[] = {
    {"vec", "VEC", 5, Number, nullptr, 5},
    {"table", "table", 8, Text, nullptr, 8},
    {"id", "ID", 5, Number, nullptr, 5},
    {"name", "(name)", 12, Text, nullptr, 255},
    {"num", "Num", 7, Number, nullptr, 7},
    {"max", "Max", 22, Time},
    {"min", "Min", 22, Time},
    {"avg", "Avg", 22, Time},
    {"total", "Total", 22, Time},
    {"ratio", "Ratio%", 8, Share, "Ratio %", 5},
    {"bar", "", 18, Bar},
};
static_assert(std::size(kColumnsOfTable) == CRunTimeAnalysis::kColumns);

}  // namespace

const kvx::AnalysisForm CRunTimeAnalysis::kForm = {"run-time", "run_time", "Run Time",
                                                   kColumnsOfTable};

const CRunTime* CRunTimeAnalysis::FindMade(std::uint32_t context) const {
    // Records stand at their line as far as the context table reached.
    if (context < static_cast<std::uint32_t>(rows_)) return &records_[context];
    const auto at =
        std::ranges::find(records_.begin() + rows_, records_.end(), context, &CRunTime::context);
    return at == records_.end() ? nullptr : &*at;
}

const CRunTime* CRunTimeAnalysis::Find(std::uint32_t context) const {
    Make();
    return FindMade(context);
}

CRunTime* CRunTimeAnalysis::Find(std::uint32_t context) {
    return const_cast<CRunTime*>(std::as_const(*this).Find(context));
}

CRunTime CRunTimeAnalysis::NewRecord(std::uint32_t context) const {
    CRunTime record;
    record.context = context;
    record.marker = shared_.marker;
    return record;
}

CRunTime& CRunTimeAnalysis::FindOrAdd(std::uint32_t context) {
    if (const CRunTime* const found = FindMade(context)) return const_cast<CRunTime&>(*found);
    return records_.emplace_back(NewRecord(context));
}

const std::vector<CRunTime>& CRunTimeAnalysis::Records() const {
    Make();
    return records_;
}

void CRunTimeAnalysis::DropRows() {
    records_.clear();
    rows_ = 0;
}

void CRunTimeAnalysis::MakeRows(IQOSTraceService* service, const kvx::AnalysisRange& range) {
    DropRows();
    if (!service) return;
    rows_ = shared_.contexts->GetCount();
    for (int line = 0; line < rows_; ++line)
        records_.push_back(NewRecord(static_cast<std::uint32_t>(line)));
    if (range.start == range.end) return;
    kvx::WithEvents(*service, [&](const auto& events) { CreditRange(events, range); });
}

template <class Events>
void CRunTimeAnalysis::CreditRange(const Events& events, const kvx::AnalysisRange& range) {
    if (events.Count() == 0) return;
    const double start = range.start;
    const double end = range.end;
    const auto credit = [&](std::uint32_t remembered, std::uint32_t dispatch) {
        const double t0 = events.Time(dispatch);
        double t1 = events.EndTime(dispatch);
        if (t0 >= end) return;
        if (t1 == 0.0) t1 = end;
        if (t1 <= start) return;
        const double length = std::min(t1, end) - std::max(t0, start);
        FindOrAdd(events.Next(dispatch)).Add(length, remembered);
    };

    if (range.first != 0) {
        // The run that the start of the range cuts.
        if (const auto cut = events.LastDispatch(range.first - 1)) credit(range.first, *cut);
    }
    events.ForEachDispatch(range.first, range.last, [&](std::uint32_t e) { credit(e, e); });
    for (CRunTime& record : records_) record.Conclude(end - start);
}

CString CRunTimeAnalysis::ContextCell(int line, int column) const {
    if (line >= shared_.contexts->GetCount()) return {};
    const ContextTexts context = shared_.contexts->GetTexts(line);
    if (column == Vec) return context.vector;
    if (column == Table) return context.table;
    if (column == Name) return context.name;
    return context.id.empty() ? CString()
                              : kvx::FormatText("%3d", shared_.contexts->GetNumber(line));
}

CString CRunTimeAnalysis::Cell(int row, int column) const {
    if (column < Num) return ContextCell(row, column);
    const CRunTime* const record = RecordOf(row);
    if (!record || column == Bar) return {};
    if (column == Num) return kvx::FormatText("%5d", record->Num);
    if (column == Ratio) return kvx::FormatText("%6.2f", record->Ratio * 100.0);
    const double times[] = {record->Max, record->Min, record->Avg, record->Total};
    return shared_.engine->TimeText(times[column - Max]);
}

CString CRunTimeAnalysis::SortText(int row, int column) const {
    if (row >= shared_.contexts->GetCount()) return {};
    if (column == Name) return shared_.contexts->GetShownName(row);
    if (shared_.contexts->GetType(row) != kContextHandler) return {};
    return kvx::FormatText("%08X", shared_.contexts->GetTableAddress(row));
}

std::int64_t CRunTimeAnalysis::SortNumber(int row, int column) const {
    if (column < Num) {
        if (row >= shared_.contexts->GetCount()) return kvx::kNoSortNumber;
        const int number = shared_.contexts->GetNumber(row);
        const int type = shared_.contexts->GetType(row);
        const bool told =
            column == Vec ? type == kContextHandler : type == kContextTask && number != 0;
        return told ? number : kvx::kNoSortNumber;
    }
    const CRunTime* const record = RecordOf(row);
    if (!record) return kvx::kNoSortNumber;
    if (column == Num) return record->Num;
    if (column >= Ratio) return kvx::SortNumberOf(record->Ratio);
    const double times[] = {record->Max, record->Min, record->Avg, record->Total};
    return kvx::ToCount(times[column - Max]);
}

kvx::Members CRunTimeAnalysis::Values(int row) const {
    const CContextMng& contexts = *shared_.contexts;
    const CRunTime* const found = RecordOf(row);
    const CRunTime& record = found ? *found : CRunTime{};
    return {{"type", std::int64_t{contexts.GetType(row)}},
            {"number", std::int64_t{contexts.GetNumber(row)}},
            {"name", contexts.GetShownName(row)},
            {"num", std::int64_t{record.Num}},
            {"max", kvx::ToCount(record.Max)},
            {"min", kvx::ToCount(record.Min)},
            {"avg", record.Avg},
            {"total", kvx::ToCount(record.Total)},
            {"ratio", record.Ratio}};
}

std::optional<std::uint32_t> CRunTimeAnalysis::EventOf(int row, int column) const {
    const CRunTime* const record = RecordOf(row);
    if (!record || (column != Max && column != Min)) return std::nullopt;
    return (column == Max ? record->maxEvents : record->minEvents).First();
}

void CRunTimeAnalysis::GoTo(int row, int column, IViewSender* view) {
    CRunTime* const record = Find(static_cast<std::uint32_t>(row));
    if (!record) return;
    if (column == Max) return record->GoToNextMax(view);
    if (column == Min) return record->GoToNextMin(view);
}

bool CRunTimeAnalysis::IsCellIndicated(int row, int column) const {
    const CRunTime* const record = RecordOf(row);
    if (!record || (column != Max && column != Min)) return false;
    return column == Max ? record->IndicatorOnMax() : record->IndicatorOnMin();
}

std::optional<CRunTimeAnalysis::ShareBar> CRunTimeAnalysis::BarOf(int row) const {
    const CRunTime* const record = RecordOf(row);
    if (!record) return std::nullopt;
    const bool known = row < shared_.contexts->GetCount();
    return ShareBar{record->Ratio, known && shared_.contexts->IsHatched(row) == 1};
}
