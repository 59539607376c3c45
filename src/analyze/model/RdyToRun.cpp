#include "analyze/model/RdyToRun.h"

#include <iterator>
#include <utility>

#include "analyze/model/ReadyLookBack.h"
#include "platform/base/Text.h"
#include "trace/ContextMng.h"
#include "trace/EventReader.h"
#include "trace/OSTrace.h"
#include "trace/TimeCount.h"
#include "traceview/model/Marker.h"

void CRdyToRun::Add(double d, std::uint32_t event) {
    ++measured;
    maxEvents.NoteLongest(Max, d, event);
    minEvents.NoteShortest(Min, d, event);
    Total += d;
}

namespace {

using enum kvx::ValueKind;

constexpr kvx::AnalysisColumn kColumnsOfTable[] = {
    {"id", "ID", 5, Number, "Id", 5},
    {"name", "(name)", 12, Text, nullptr, 255},
    {"num", "Num", 8, Number, nullptr, 8},
    {"max", "Max", 22, Time},
    {"min", "Min", 22, Time},
    {"avg", "Avg", 22, Time},
};
static_assert(std::size(kColumnsOfTable) == CRdyToRunAnalysis::kColumns);

}  // namespace

const kvx::AnalysisForm CRdyToRunAnalysis::kForm = {"rdy-run", "rdy_run", "Rdy->Run",
                                                    kColumnsOfTable};

CRdyToRun* CRdyToRunAnalysis::Find(std::uint32_t context) {
    Make();
    return FindMade(context);
}

CRdyToRun* CRdyToRunAnalysis::Record(int n) {
    return const_cast<CRdyToRun*>(std::as_const(*this).Record(n));
}

const CRdyToRun* CRdyToRunAnalysis::Record(int n) const {
    Make();
    if (n < 0 || n >= MadeRows()) return nullptr;
    return &records_[static_cast<std::size_t>(n)];
}

void CRdyToRunAnalysis::DropRows() {
    records_.clear();
    recordOfLine_.clear();
}

void CRdyToRunAnalysis::MakeRows(IQOSTraceService* service, const kvx::AnalysisRange& range) {
    DropRows();
    if (!service) return;
    AddTasks();
    kvx::WithEvents(*service, [&](const auto& events) { CreditRange(events, range); });
}

void CRdyToRunAnalysis::AddTasks() {
    recordOfLine_.assign(static_cast<std::size_t>(shared_.contexts->GetCount()), -1);
    for (int line = 0; line < shared_.contexts->GetCount(); ++line) {
        if (shared_.contexts->GetType(line) != kContextTask ||
            shared_.contexts->GetNumber(line) == 0)
            continue;
        const int position = MadeRows();
        recordOfLine_[static_cast<std::size_t>(line)] = position;
        CRdyToRun& record = records_.emplace_back();
        record.context = static_cast<std::uint32_t>(line);
        record.marker = shared_.marker;
    }
}

template <class Events>
void CRdyToRunAnalysis::CreditRange(const Events& events, const kvx::AnalysisRange& range) {
    if (events.Count() == 0) return;
    gap_ = false;
    kvx::ReadyLookBack<Events> before(events, range.first,
                                      [this](std::uint32_t line) { return IsUnknown(line); });
    // Where nothing is ever unknown, a ready state ends with the dispatch that it is measured to.
    const bool mayBeCut = AnyUnknown();
    for (std::uint32_t e = range.first; e < range.waitsBelow; ++e) {
        const int kind = events.Kind(e);
        if (kind == kEventState) {
            if (CRdyToRun* const record = FindMade(events.StateContext(e))) {
                record->stateKnown = true;
                record->byLoss = false;
                record->canBeReady = events.IsReady(e);
                record->readySince = record->canBeReady ? events.Time(e) : 0.0;
                record->readyUntil = mayBeCut ? events.EndTime(e) : 0.0;
            }
        } else if (kind == kEventDispatch) {
            const double t = events.Time(e);
            if (mayBeCut && IsUnknown(events.Next(e))) EndKnowledge();
            if (CRdyToRun* const left = FindMade(events.Context(e))) Leave(*left, t, before);
            if (CRdyToRun* const entered = FindMade(events.Next(e))) Credit(*entered, e, t, before);
        }
    }
    for (CRdyToRun& record : records_)
        if (record.measured > 0) record.Avg = record.Total / record.measured;
}

bool CRdyToRunAnalysis::AnyUnknown() const {
    for (int line = 0; line < shared_.contexts->GetCount(); ++line)
        if (IsUnknown(static_cast<std::uint32_t>(line))) return true;
    return false;
}

bool CRdyToRunAnalysis::IsUnknown(std::uint32_t line) const {
    return line != kvx::kNoLine &&
           shared_.contexts->GetType(static_cast<int>(line)) == kContextUnknown;
}

// A gap of the recording begins: nobody is known to be ready by having lost the processor before
// it, and nobody becomes ready so before a state is told.
void CRdyToRunAnalysis::EndKnowledge() {
    gap_ = true;
    for (CRdyToRun& record : records_) {
        if (record.byLoss) record.readySince = 0.0;
        record.canBeReady = record.byLoss = false;
    }
}

// The task lost the processor at time t. That makes it ready unless it waits, is suspended or
// dormant, or nothing is known of it.
template <class LookBack>
void CRdyToRunAnalysis::Leave(CRdyToRun& record, double t, LookBack& before) {
    if (!record.stateKnown) record.canBeReady = !gap_ && before.CanBeReady(record.context);
    record.stateKnown = true;
    record.byLoss = record.canBeReady;
    record.readySince = record.byLoss ? t : 0.0;
    record.readyUntil = 0.0;
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
            const bool state = before.Reader().Kind(*ready) == kEventState;
            record.readyUntil = state ? before.Reader().EndTime(*ready) : 0.0;
            if (!state && gap_) record.readySince = 0.0;
        }
    }
    const bool cut = record.readyUntil != 0.0 && record.readyUntil < t;
    if (record.readySince != 0.0 && !cut) record.Add(t - record.readySince, remembered);
    record.readySince = 0.0;
}

CString CRdyToRunAnalysis::Cell(int row, int column) const {
    const CRdyToRun& record = *Record(row);
    const int line = static_cast<int>(record.context);
    const bool known = line < shared_.contexts->GetCount();
    if (column == Id) return known ? kvx::FormatText("%3d", shared_.contexts->GetNumber(line)) : "";
    if (column == Name) return known ? shared_.contexts->GetShownName(line) : "";
    if (column == Num) return kvx::FormatText(" %5d", record.Num);
    const double times[] = {record.Max, record.Min, record.Avg};
    return shared_.engine->TimeText(times[column - Max]);
}

std::int64_t CRdyToRunAnalysis::SortNumber(int row, int column) const {
    const CRdyToRun& record = *Record(row);
    const int line = static_cast<int>(record.context);
    if (column == Id)
        return line < shared_.contexts->GetCount() ? shared_.contexts->GetNumber(line)
                                                   : kvx::kNoSortNumber;
    if (column == Num) return record.Num;
    const double times[] = {record.Max, record.Min, record.Avg};
    return kvx::ToCount(times[column - Max]);
}

kvx::Members CRdyToRunAnalysis::Values(int row) const {
    const CRdyToRun& record = *Record(row);
    const int line = static_cast<int>(record.context);
    return {{"number", std::int64_t{shared_.contexts->GetNumber(line)}},
            {"name", shared_.contexts->GetShownName(line)},
            {"num", std::int64_t{record.Num}},
            {"measured", std::int64_t{record.measured}},
            {"max", kvx::ToCount(record.Max)},
            {"min", kvx::ToCount(record.Min)},
            {"avg", record.Avg},
            {"total", kvx::ToCount(record.Total)}};
}

std::optional<std::uint32_t> CRdyToRunAnalysis::EventOf(int row, int column) const {
    if (column != Max && column != Min) return std::nullopt;
    const CRdyToRun& record = *Record(row);
    return (column == Max ? record.maxEvents : record.minEvents).First();
}

void CRdyToRunAnalysis::GoTo(int row, int column, IViewSender* view) {
    CRdyToRun& record = *Record(row);
    if (column == Max) return record.GoToNextMax(view);
    if (column == Min) return record.GoToNextMin(view);
}

bool CRdyToRunAnalysis::IsCellIndicated(int row, int column) const {
    if (column != Max && column != Min) return false;
    const CRdyToRun& record = *Record(row);
    return column == Max ? record.IndicatorOnMax() : record.IndicatorOnMin();
}
