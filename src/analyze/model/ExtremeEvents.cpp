#include "analyze/model/ExtremeEvents.h"

#include <algorithm>

#include "trace/EventReader.h"
#include "traceview/model/Marker.h"

namespace kvx {

void ExtremeEvents::Append(std::uint32_t event) {
    if (!events_.empty() && event < events_.back()) ascending_ = false;
    events_.push_back(event);
}

// A view that follows the indicator may decode more records, and the analyses are built anew then:
// nothing of this object is touched behind that.
void ExtremeEvents::GoToNext(COSMarker& marker, IViewSender* view) {
    if (events_.empty()) return;
    const std::uint32_t event = events_[cursor_];
    cursor_ = (cursor_ + 1) % events_.size();
    marker.SetMarker(view, kMarkerIndicator, event);
    if (view) view->InvalidateView();
}

int ExtremeEvents::HasIndicator(const COSMarker& marker) const {
    IQOSTraceService* const service = marker.Source().Service();
    if (!service) return 0;
    if (!ascending_ && sorted_.size() != events_.size()) {
        sorted_ = events_;
        std::sort(sorted_.begin(), sorted_.end());
    }
    const auto& events = ascending_ ? events_ : sorted_;
    const PlainEvents reader(*service);
    const double time = marker.GetMarkerTime(kMarkerIndicator);
    const auto at = std::partition_point(events.begin(), events.end(),
                                         [&](std::uint32_t e) { return reader.Time(e) < time; });
    return at != events.end() && reader.Time(*at) == time ? 1 : 0;
}

}  // namespace kvx
