#include "analyze/model/SysCallList.h"

#include "analyze/model/HistoryText.h"
#include "analyze/model/SortKeys.h"
#include "host/ModuleHost.h"
#include "platform/Text.h"
#include "trace/EventReader.h"
#include "trace/TimeSearch.h"
#include "traceview/model/Marker.h"

namespace {

// The event of a history entry; nothing that the list holds when it has none.
std::uint32_t HistoryEvent(IQOSTraceService& service, std::uint32_t history) {
    std::uint32_t event = 0xFFFFFFFFu;
    service.GetHistoryEvent(history, &event);
    return event;
}

CString SortKey(IQOSTraceService& service, std::uint32_t history, int column) {
    std::int32_t number = 0;
    std::int64_t time = 0;
    switch (column) {
        case COSSysCallList::No:
            service.GetHistoryNumber(history, &number);
            return kvx::NumberKey(number, 10);
        case COSSysCallList::Name:
            return kvx::HistoryText(service, &IQOSTraceService::GetHistoryName, history);
        case COSSysCallList::Parameter:
            return kvx::HistoryText(service, &IQOSTraceService::GetHistoryParameter, history);
        case COSSysCallList::ReturnParameter:
            return kvx::HistoryText(service, &IQOSTraceService::GetHistoryReturnParameter, history);
        default:
            service.GetHistoryTime(history, &time);
            return kvx::NumberKey(time, kvx::kTimeKey);
    }
}

}  // namespace

void COSSysCallList::Clear() {
    first_ = count_ = 0;
    rows_ = {};
    rowOf_ = {};
}

void COSSysCallList::Build() {
    IQOSTraceService* const service = kvx::host::TraceService();
    if (!service) return;
    Clear();
    if (!marker_->IsKeepSort()) sort_.Reset();
    std::uint32_t historyCount = 0;
    service->GetHistoryCount(&historyCount);
    if (historyCount != 0) {
        std::uint32_t last = 0;
        if (!FindRange(*service, historyCount, &last)) return;
        count_ = last < first_ ? 0 : last - first_ + 1;
    }
    if (marker_->IsKeepSort() && sort_.Column() != -1) Sort(sort_.Column(), 1);
}

// The history indexes of the first and the last system call from start to end marker; false when
// there is none. A later event has a greater history index, which a service with columns
// vouches for; another one is asked event by event.
bool COSSysCallList::FindRange(IQOSTraceService& service, std::uint32_t historyCount,
                               std::uint32_t* last) {
    const std::uint64_t start = marker_->GetMarkerEvent(kMarkerStart);
    const std::uint64_t end = marker_->GetMarkerEvent(kMarkerEnd);
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

void COSSysCallList::Sort(int column, int again) {
    IQOSTraceService* const service = kvx::host::TraceService();
    if (!service) return;
    const auto direction = sort_.Begin(column, again);
    if (!direction) return;
    kvx::SortKeys keys;
    keys.Reserve(count_, 20);
    // In the order of the history, which a service reads faster than any other.
    for (std::uint32_t n = 0; n < count_; ++n) {
        const CString key = SortKey(*service, first_ + n, column);
        keys.Add(kvx::Utf8Prefix(key, kvx::kMaxKey));
    }
    rows_ = keys.Order(*direction == kvx::kAscending, std::move(rows_));
    rowOf_.resize(count_);
    for (std::uint32_t k = 0; k < count_; ++k) rowOf_[rows_[k]] = k;
}

std::optional<std::uint32_t> COSSysCallList::Entry(int n) const {
    if (n < 0 || n >= EntryCount()) return std::nullopt;
    return first_ + static_cast<std::uint32_t>(n);
}

std::uint32_t COSSysCallList::RowHistoryIndex(int k) const {
    const auto row = static_cast<std::uint32_t>(k);
    return first_ + (rows_.empty() ? row : rows_[row]);
}

int COSSysCallList::FindRow(std::uint32_t history) const {
    const std::uint32_t entry = history - first_;
    if (history < first_ || entry >= count_) return -1;
    return static_cast<int>(rowOf_.empty() ? entry : rowOf_[entry]);
}
