#include "analyze/model/SysCallList.h"

#include "trace/EventReader.h"
#include "trace/TimeSearch.h"
#include "traceview/model/Marker.h"

namespace {

constexpr std::chrono::hours kAsLongAsItTakes{24};

// The event of a history entry; nothing that the list holds when it has none.
std::uint32_t HistoryEvent(IQOSTraceService& service, std::uint32_t history) {
    std::uint32_t event = 0xFFFFFFFFu;
    service.GetHistoryEvent(history, &event);
    return event;
}

}  // namespace

void COSSysCallList::Clear() {
    first_ = count_ = 0;
    rows_ = {};
    rowOf_ = {};
}

void COSSysCallList::BeginRows() {
    rows_.Begin(first_, count_);
    rowOf_ = {};
}

void COSSysCallList::Build() {
    IQOSTraceService* const service = source_.Service();
    if (!service) return;
    first_ = count_ = 0;
    BeginRows();
    if (!marker_->IsKeepSort()) sort_.Reset();
    std::uint32_t historyCount = 0;
    service->GetHistoryCount(&historyCount);
    if (historyCount != 0) {
        std::uint32_t last = 0;
        if (!FindRange(*service, historyCount, &last)) return;
        count_ = last < first_ ? 0 : last - first_ + 1;
        BeginRows();
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
    if (!source_.Service()) return;
    const auto direction = sort_.Begin(column, again);
    if (!direction) return;
    rows_.SortBy(column, *direction == kvx::kAscending);
    rowOf_ = {};
}

bool COSSysCallList::SortFor(std::chrono::milliseconds time) const {
    if (!rows_.IsDue()) return true;
    IQOSTraceService* const service = source_.Service();
    return service && rows_.Continue(*service, kvx::CallOrder::Clock::now() + time);
}

const std::vector<std::uint32_t>& COSSysCallList::Rows() const {
    SortFor(kAsLongAsItTakes);
    return rows_.Order();
}

std::optional<std::uint32_t> COSSysCallList::Entry(int n) const {
    if (n < 0 || n >= EntryCount()) return std::nullopt;
    return first_ + static_cast<std::uint32_t>(n);
}

std::uint32_t COSSysCallList::RowHistoryIndex(int k) const {
    const auto row = static_cast<std::uint32_t>(k);
    const std::vector<std::uint32_t>& rows = Rows();
    return first_ + (rows.empty() ? row : rows[row]);
}

int COSSysCallList::FindRow(std::uint32_t history) const {
    const std::uint32_t entry = history - first_;
    if (history < first_ || entry >= count_) return -1;
    const std::vector<std::uint32_t>& rows = Rows();
    if (rows.empty()) return static_cast<int>(entry);
    if (rowOf_.empty()) {
        rowOf_.resize(count_);
        for (std::uint32_t k = 0; k < count_; ++k) rowOf_[rows[k]] = k;
    }
    return static_cast<int>(rowOf_[entry]);
}
