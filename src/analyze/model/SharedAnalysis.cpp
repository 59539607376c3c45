#include "analyze/model/SharedAnalysis.h"

#include <mutex>
#include <utility>

#include "traceview/model/Marker.h"

namespace kvx {

namespace {

constexpr std::chrono::hours kAsLongAsItTakes{24};

}  // namespace

void SharedAnalysis::Build() {
    const AnalysisRange range = shared_.marker->Range();
    due_ = range;
    ++builds_;
    if (!shared_.marker->IsRebuildRows() && !HasNewRows()) return;
    isOrderDue_ = true;
    if (!shared_.marker->IsKeepSort()) sort_.Reset();
    repeatsSort_ = sort_.Column() != -1 && RepeatsSort(range);
}

void SharedAnalysis::Clear() {
    due_.reset();
    ++builds_;
    isOrderDue_ = true;
    repeatsSort_ = false;
    DropRows();
}

// The rows are the range in another form, which is why whoever may read them may have them made.
void SharedAnalysis::Make() const {
    if (!due_) return;
    const std::lock_guard guard(*shared_.lock);
    const AnalysisRange range = *std::exchange(due_, std::nullopt);
    const_cast<SharedAnalysis*>(this)->MakeRows(source_.Service(), range);
}

int SharedAnalysis::RowCount() const {
    Make();
    return MadeRows();
}

void SharedAnalysis::BeginOrder() const {
    const auto rows = static_cast<std::uint32_t>(RowCount());
    if (!isOrderDue_ && order_.RowCount() == rows) return;
    order_.Begin(rows);
    placeOf_ = {};
    isOrderDue_ = false;
    if (!std::exchange(repeatsSort_, false)) return;
    order_.SortBy(sort_.Column(), sort_.State(sort_.Column()) == kSortedAscending);
}

void SharedAnalysis::Sort(int column, int again) {
    if (!IsReadable()) return;
    BeginOrder();
    const auto ascending = sort_.Begin(column, again);
    if (!ascending) return;
    order_.SortBy(column, *ascending);
    placeOf_ = {};
}

bool SharedAnalysis::SortFor(std::chrono::milliseconds time) const {
    BeginOrder();
    if (!order_.IsDue()) return true;
    return IsReadable() && order_.Continue(*this, RowOrder::Clock::now() + time);
}

const std::vector<std::uint32_t>& SharedAnalysis::Order() const {
    SortFor(kAsLongAsItTakes);
    return order_.Order();
}

int SharedAnalysis::Row(int k) const {
    const std::vector<std::uint32_t>& order = Order();
    return order.empty() ? k : static_cast<int>(order[static_cast<std::size_t>(k)]);
}

int SharedAnalysis::PlaceOf(int row) const {
    const std::vector<std::uint32_t>& order = Order();
    if (order.empty()) return row;
    if (placeOf_.empty()) {
        placeOf_.resize(order.size());
        for (std::uint32_t k = 0; k < order.size(); ++k) placeOf_[order[k]] = k;
    }
    return static_cast<int>(placeOf_[static_cast<std::size_t>(row)]);
}

}  // namespace kvx
