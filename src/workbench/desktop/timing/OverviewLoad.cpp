#include "workbench/desktop/timing/OverviewLoad.h"

#include <algorithm>

namespace kvx::desktop {

void OverviewLoad::SetRecording(std::shared_ptr<const service::DecodedRecording> decoded,
                                std::size_t timeline) {
    decoded_ = std::move(decoded);
    timeline_ = decoded_ ? decoded_->Timelines()[timeline].get() : nullptr;
    next_ = 0;
    isLastTaken_ = false;
    placeOf_.clear();
    shares_.clear();
    if (!decoded_) return;
    start_ = decoded_->GetRecording().FirstTime();
    end_ = std::max(decoded_->GetRecording().LastTime(), start_ + 1);
    sliceLength_ = static_cast<double>(end_ - start_) / kSlices;
}

// Idle is task 0.
std::vector<float>& OverviewLoad::SharesOf(std::uint32_t context) {
    if (context >= placeOf_.size()) placeOf_.resize(std::size_t{context} + 1, -1);
    int& place = placeOf_[context];
    if (place < 0) {
        place = static_cast<int>(std::min(shares_.size(), kContexts));
        if (static_cast<std::size_t>(place) == shares_.size()) shares_.emplace_back(kSlices, 0.0f);
    }
    return shares_[static_cast<std::size_t>(place)];
}

void OverviewLoad::Credit(std::uint32_t context, std::int64_t from, std::int64_t to) {
    const service::ContextKey& key = timeline_->contexts.Get(context).key;
    const bool isIdle = key.kind == service::ContextKind::Task && key.id == 0;
    if (isIdle || key.kind == service::ContextKind::Unknown || to <= from) return;
    std::vector<float>& shares = SharesOf(context);
    double at = static_cast<double>(from - start_) / sliceLength_;
    const double end = std::min<double>(kSlices, static_cast<double>(to - start_) / sliceLength_);
    while (at < end) {
        const auto slice = static_cast<std::size_t>(at);
        const double until = std::min(end, static_cast<double>(slice + 1));
        shares[slice] += static_cast<float>(until - at);
        at = until;
    }
}

bool OverviewLoad::Advance() {
    if (!timeline_ || isLastTaken_) return false;
    const bool complete = decoded_->IsComplete();
    const service::EventStore& events = timeline_->events;
    const auto dispatches = events.Dispatches(events.Count());
    const std::size_t before = next_;
    for (; next_ + 1 < dispatches.size(); ++next_)
        Credit(events.Next(dispatches[next_]), events.Time(dispatches[next_]),
               events.Time(dispatches[next_ + 1]));
    if (complete) {
        isLastTaken_ = true;
        if (next_ < dispatches.size())
            Credit(events.Next(dispatches[next_]), events.Time(dispatches[next_]), end_);
    }
    return isLastTaken_ || next_ != before;
}

}  // namespace kvx::desktop
