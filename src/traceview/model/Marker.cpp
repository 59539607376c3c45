#include "traceview/model/Marker.h"

#include <mutex>
#include <utility>

#include "analyze/model/SharedAnalysis.h"
#include "trace/EventReader.h"
#include "trace/TimeSearch.h"

// The two flags, set for the duration of one SetMarker.
class COSMarker::Flags {
  public:
    Flags(COSMarker& marker, bool keepSort) : marker_(marker) {
        marker.rebuildRows_ = 1;
        marker.keepSort_ = keepSort ? 1 : 0;
    }
    Flags(const Flags&) = delete;
    Flags& operator=(const Flags&) = delete;
    ~Flags() { marker_.rebuildRows_ = marker_.keepSort_ = 0; }

  private:
    COSMarker& marker_;
};

std::optional<kvx::PlainEvents> COSMarker::Events() const {
    IQOSTraceService* const service = source_.Service();
    if (!service) return std::nullopt;
    return kvx::PlainEvents(*service);
}

void COSMarker::Reset() {
    times_ = {};
    events_ = {};
    dragging_ = {};
    rangeEnd_.reset();
}

kvx::AnalysisRange COSMarker::Range() const {
    const std::uint32_t last = GetMarkerEvent(kMarkerEnd);
    return {GetMarkerTime(kMarkerStart), rangeEnd_.value_or(GetMarkerTime(kMarkerEnd)),
            GetMarkerEvent(kMarkerStart), last, rangeEnd_ ? last + 1 : last};
}

void COSMarker::BeginDrag(int which) {
    dragging_[Index(which)] = 1;
    timeBefore_ = times_[Index(which)];
    eventBefore_ = events_[Index(which)];
}

void COSMarker::CancelDrag(int which) {
    if (!std::exchange(dragging_[Index(which)], 0)) return;
    times_[Index(which)] = timeBefore_;
    events_[Index(which)] = eventBefore_;
}

void COSMarker::EndDrag(IViewSender* sender, int which) {
    dragging_[Index(which)] = 0;
    SetMarker(sender, which, GetMarkerEvent(which));
}

void COSMarker::SetMarker(IViewSender* sender, int which, std::uint32_t event) {
    const auto events = Events();
    if (!events) return;
    const std::uint32_t count = events->Count();
    if (event >= count) return;
    events_[Index(which)] = event;
    times_[Index(which)] = events->Time(event);

    const bool dragged = IsDragging(which);
    if (!dragged && IsPlaced(kMarkerEnd) && times_[kMarkerStart] > times_[kMarkerEnd]) {
        std::swap(times_[kMarkerStart], times_[kMarkerEnd]);
        std::swap(events_[kMarkerStart], events_[kMarkerEnd]);
    }
    if (IsPlaced(kMarkerStart)) {
        events_[kMarkerStart] = kvx::FirstWhere(0u, events_[kMarkerStart], [&](std::uint32_t e) {
            return events->Time(e) >= times_[kMarkerStart];
        });
    }
    for (const int last : {kMarkerEnd, kMarkerIndicator}) {
        if (!IsPlaced(last)) continue;
        const double time = GetMarkerTime(last);
        const std::uint32_t beyond =
            kvx::FirstWhere(GetMarkerEvent(last) + 1, count,
                            [&](std::uint32_t e) { return events->Time(e) > time; });
        events_[Index(last)] = beyond - 1;
    }
    if (dragged) return;
    if (which != kMarkerIndicator) RebuildAnalyses();
    source_.BroadcastDisplayChanged(sender);
}

void COSMarker::RebuildAnalyses() {
    const std::lock_guard guard(*shared_.lock);
    for (kvx::SharedAnalysis* const analysis : shared_.analyses) analysis->Build();
}

void COSMarker::SetMarkerAt(IViewSender* sender, int which, double time) {
    const auto events = Events();
    if (!events) return;
    const std::uint32_t event = kvx::FirstWhere(
        0u, events->Count(), [&](std::uint32_t e) { return events->Time(e) >= time; });
    const Flags flags(*this, true);
    SetMarker(sender, which, event);
}

void COSMarker::MoveStartIntoDisplay(IViewSender* sender, double displayStart) {
    SetMarkerAt(sender, kMarkerStart, displayStart);
}

void COSMarker::MoveEndIntoDisplay(IViewSender* sender, double displayEnd) {
    const auto events = Events();
    if (!events) return;
    const std::uint32_t beyond = kvx::FirstWhere(
        0u, events->Count(), [&](std::uint32_t e) { return events->Time(e) > displayEnd; });
    if (beyond == 0) return;
    const Flags flags(*this, true);
    SetMarker(sender, kMarkerEnd, beyond - 1);
}

void COSMarker::MoveIndicatorIntoDisplay(IViewSender* sender, double displayStart,
                                         double displayEnd) {
    const auto events = Events();
    const std::uint32_t count = events ? events->Count() : 0;
    if (count == 0) return;
    const double middle = displayStart + (displayEnd - displayStart) / 2.0;
    const std::uint32_t first =
        kvx::FirstWhere(0u, count - 1, [&](std::uint32_t e) { return events->Time(e) > middle; });
    SetMarker(sender, kMarkerIndicator, first);
}

void COSMarker::Rebuild(IViewSender* sender, bool keepSort) {
    const Flags flags(*this, keepSort);
    SetMarker(sender, kMarkerStart, GetMarkerEvent(kMarkerStart));
}

void COSMarker::Drop(IViewSender* sender) {
    for (const int which : {kMarkerStart, kMarkerEnd}) {
        if (!IsDragging(which)) continue;
        const Flags flags(*this, true);
        EndDrag(sender, which);
    }
    if (IsDragging(kMarkerIndicator)) EndDrag(sender, kMarkerIndicator);
}

std::optional<std::uint32_t> COSMarker::DragTarget(int which, int x,
                                                   const ChartGeometry& geometry) const {
    const auto events = Events();
    const std::uint32_t count = events ? events->Count() : 0;
    const std::uint32_t at = GetMarkerEvent(which);
    const double time = GetMarkerTime(which);
    const int markerX = geometry.X(time);
    if (at >= count || x < geometry.left || x == markerX) return std::nullopt;
    const auto column = [&](std::uint32_t e) { return geometry.X(events->Time(e)); };

    if (x < markerX) {
        // Events below at whose time is earlier and whose column is not right of x.
        const std::uint32_t beyond = kvx::FirstWhere(
            0u, at, [&](std::uint32_t e) { return events->Time(e) >= time || column(e) > x; });
        if (beyond == 0) return std::nullopt;
        return column(beyond - 1) == x ? beyond - 1 : beyond;
    }
    const std::uint32_t first = kvx::FirstWhere(
        at + 1, count, [&](std::uint32_t e) { return events->Time(e) > time && column(e) >= x; });
    if (first == count) return std::nullopt;
    return column(first) == x ? first : first - 1;
}
