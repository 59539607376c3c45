#include "analyze/model/SysCallList.h"

#include <iterator>

#include "analyze/model/HistoryText.h"
#include "platform/base/Text.h"
#include "trace/EventReader.h"
#include "trace/OSTrace.h"
#include "trace/TimeSearch.h"
#include "traceview/model/Marker.h"

namespace {

constexpr kvx::AnalysisColumn kColumnsOfTable[] = {
    {"no", "No", 7, kvx::ValueKind::Number, nullptr, 7},
    {"name", "System Call", 13, kvx::ValueKind::Text, nullptr, 255},
    {"parameters", "Parameter", 35, kvx::ValueKind::Text, nullptr, 255},
    {"return", "Return Parameter", 35, kvx::ValueKind::Text, nullptr, 255},
    {"time", "TIME", 22, kvx::ValueKind::Time},
};
static_assert(std::size(kColumnsOfTable) == COSSysCallList::kColumns);

// The event of a history entry; nothing that the list holds when it has none.
std::uint32_t HistoryEvent(IQOSTraceService& service, std::uint32_t history) {
    std::uint32_t event = 0xFFFFFFFFu;
    service.GetHistoryEvent(history, &event);
    return event;
}

std::int64_t HistoryNumber(IQOSTraceService& service, std::uint32_t history) {
    std::int32_t number = 0;
    service.GetHistoryNumber(history, &number);
    return number;
}

std::int64_t HistoryTime(IQOSTraceService& service, std::uint32_t history) {
    std::int64_t time = 0;
    service.GetHistoryTime(history, &time);
    return time;
}

kvx::HistoryGetter GetterOf(int column) {
    if (column == COSSysCallList::Name) return &IQOSTraceService::GetHistoryName;
    if (column == COSSysCallList::Parameter) return &IQOSTraceService::GetHistoryParameter;
    return &IQOSTraceService::GetHistoryReturnParameter;
}

}  // namespace

const kvx::AnalysisForm COSSysCallList::kForm = {"syscalls", "system_calls", "System Call",
                                                 kColumnsOfTable};

// Without a service the list stays as it is.
void COSSysCallList::MakeRows(IQOSTraceService* service, const kvx::AnalysisRange& range) {
    if (!service) return;
    first_ = count_ = 0;
    std::uint32_t historyCount = 0;
    std::uint32_t last = 0;
    service->GetHistoryCount(&historyCount);
    if (historyCount == 0 || !FindRange(*service, range, historyCount, &last)) return;
    count_ = last < first_ ? 0 : last - first_ + 1;
}

// The history indexes of the first and the last system call from start to end marker; false when
// there is none. A later event has a greater history index, which a service with columns
// vouches for; another one is asked event by event.
bool COSSysCallList::FindRange(IQOSTraceService& service, const kvx::AnalysisRange& range,
                               std::uint32_t historyCount, std::uint32_t* last) {
    const std::uint64_t start = range.first;
    const std::uint64_t end = range.last;
    if (kvx::QueryColumns(service)) {
        const auto after = [&](std::uint64_t event) {
            return kvx::FirstWhere(0u, historyCount, [&](std::uint32_t h) {
                return HistoryEvent(service, h) >= event;
            });
        };
        first_ = after(start);
        const std::uint32_t beyond = after(end + 1);
        *last = beyond - 1;
        return first_ < beyond;
    }
    std::uint64_t e = start;
    const auto isCall = [&](std::uint32_t* history) {
        return Succeeded(service.GetHistoryIndex(static_cast<std::uint32_t>(e), history)) &&
               *history < historyCount;
    };
    while (e <= end && !isCall(&first_)) ++e;
    if (e > end) return false;
    for (e = end; !isCall(last);) --e;
    return true;
}

std::uint64_t COSSysCallList::Revision() const {
    IQOSTraceService* const service = source_.Service();
    std::uint32_t historyCount = 0;
    if (service) service->GetHistoryCount(&historyCount);
    return historyCount;
}

std::optional<std::uint32_t> COSSysCallList::Entry(int n) const {
    if (n < 0 || n >= RowCount()) return std::nullopt;
    return HistoryOf(n);
}

int COSSysCallList::FindRow(std::uint32_t history) const {
    const auto rows = static_cast<std::uint32_t>(RowCount());
    if (history < first_ || history - first_ >= rows) return -1;
    return PlaceOf(static_cast<int>(history - first_));
}

CString COSSysCallList::Cell(int row, int column) const {
    IQOSTraceService* const service = source_.Service();
    if (!service) return {};
    const std::uint32_t history = HistoryOf(row);
    if (column == No)
        return kvx::FormatText("%d", static_cast<int>(HistoryNumber(*service, history)));
    if (column == Time)
        return shared_.engine->TimeText(static_cast<double>(HistoryTime(*service, history)));
    return kvx::HistoryText(*service, GetterOf(column), history);
}

std::int64_t COSSysCallList::SortNumber(int row, int column) const {
    IQOSTraceService* const service = source_.Service();
    if (!service) return kvx::kNoSortNumber;
    return column == No ? HistoryNumber(*service, HistoryOf(row))
                        : HistoryTime(*service, HistoryOf(row));
}

kvx::Members COSSysCallList::Values(int row) const {
    IQOSTraceService* const service = source_.Service();
    if (!service) return {};
    const std::uint32_t history = HistoryOf(row);
    return {{"no", HistoryNumber(*service, history)},
            {"name", Cell(row, Name)},
            {"parameters", Cell(row, Parameter)},
            {"return", Cell(row, ReturnParameter)},
            {"time", HistoryTime(*service, history)}};
}

std::optional<std::uint32_t> COSSysCallList::EventOf(int row, int) const {
    IQOSTraceService* const service = source_.Service();
    std::uint32_t event = 0;
    if (!service || Failed(service->GetHistoryEvent(HistoryOf(row), &event))) return std::nullopt;
    return event;
}

void COSSysCallList::GoTo(int row, int column, IViewSender* view) {
    const auto event = EventOf(row, column);
    if (!event) return;
    shared_.marker->SetMarker(view, kMarkerIndicator, *event);
    if (view) view->InvalidateView();
}

std::optional<int> COSSysCallList::IndicatedRow() const {
    IQOSTraceService* const service = source_.Service();
    std::uint32_t history = 0;
    const std::uint32_t event = shared_.marker->GetMarkerEvent(kMarkerIndicator);
    if (!service || Failed(service->GetHistoryIndex(event, &history))) return std::nullopt;
    const auto rows = static_cast<std::uint32_t>(RowCount());
    if (history < first_ || history - first_ >= rows) return std::nullopt;
    return static_cast<int>(history - first_);
}
