#pragma once
// Start marker, end marker and indicator. Start and end bound the range of the analyses; every
// marker stands on an event.

#include <array>
#include <cstdint>
#include <optional>
#include <span>

#include "analyze/model/AnalysisRange.h"
#include "platform/base/Mutex.h"
#include "trace/TraceSource.h"
#include "traceview/model/ChartGeometry.h"

namespace kvx {
class PlainEvents;
class SharedAnalysis;
}  // namespace kvx

inline constexpr int kMarkerStart = 0;
inline constexpr int kMarkerEnd = 1;
inline constexpr int kMarkerIndicator = 2;

class COSMarker {
  public:
    // Borrows the source.
    explicit COSMarker(kvx::ITraceSource& source) : source_(source) {}
    kvx::ITraceSource& Source() const { return source_; }

    // Borrowed, set once by their owner.
    struct Shared {
        std::span<kvx::SharedAnalysis* const> analyses;
        CMutex* lock = nullptr;
    };
    void SetShared(const Shared& shared) { shared_ = shared; }

    // 0.0: not placed.
    double GetMarkerTime(int which) const { return times_[Index(which)]; }
    std::uint32_t GetMarkerEvent(int which) const { return events_[Index(which)]; }
    int IsDragging(int which) const { return dragging_[Index(which)]; }
    bool IsAnyDragging() const { return dragging_[0] || dragging_[1] || dragging_[2]; }
    void BeginDrag(int which);
    void EndDrag(IViewSender* sender, int which);
    // The marker stands again where the drag began. Nothing else changes, and nobody is told: all
    // that follows the markers has kept to where they were.
    void CancelDrag(int which);
    // Puts the marker on the event, keeps start before end, and, unless the marker is dragged,
    // rebuilds the analyses (start, end) and broadcasts. An event beyond the last is ignored.
    void SetMarker(IViewSender* sender, int which, std::uint32_t event);
    // The same, on the first event at or after the time; nothing when there is none. Rows of the
    // analyses are made anew and sorted as before.
    void SetMarkerAt(IViewSender* sender, int which, double time);
    // Times, events, dragging and the end of the range; the flags below stay.
    void Reset();

    // The range of the analyses: from the start marker to the end marker, or to the end that was
    // set instead.
    kvx::AnalysisRange Range() const;
    // For a range that ends with the recording, behind the event on which the end marker stands.
    void EndRangeAt(double time) { rangeEnd_ = time; }

    // The three commands that bring a marker into the display; nothing when no event fits.
    void MoveStartIntoDisplay(IViewSender* sender, double displayStart);
    void MoveEndIntoDisplay(IViewSender* sender, double displayEnd);
    void MoveIndicatorIntoDisplay(IViewSender* sender, double displayStart, double displayEnd);
    // Lets the analyses follow new records or a new line order, with the markers where they are:
    // rows are made anew, and with keepSort sorted as before.
    void Rebuild(IViewSender* sender, bool keepSort);
    // Ends whatever is being dragged: start, end, indicator.
    void Drop(IViewSender* sender);
    // The event to which the marker jumps when it is dragged to column x.
    std::optional<std::uint32_t> DragTarget(int which, int x, const ChartGeometry& geometry) const;

    int GetSearchFlag() const { return searchFlag_; }
    void SetSearchFlag(int flag) { searchFlag_ = flag; }
    // Read by the analyses while they are rebuilt: make the display rows anew; keep the sort
    // states.
    int IsRebuildRows() const { return rebuildRows_; }
    int IsKeepSort() const { return keepSort_; }

  private:
    class Flags;
    static std::size_t Index(int which) { return static_cast<std::size_t>(which); }
    bool IsPlaced(int which) const {
        return times_[Index(which)] != 0.0 && events_[Index(which)] != 0;
    }
    void RebuildAnalyses();
    std::optional<kvx::PlainEvents> Events() const;

    kvx::ITraceSource& source_;
    std::array<double, 3> times_{};
    std::array<std::uint32_t, 3> events_{};
    std::array<int, 3> dragging_{};
    double timeBefore_ = 0.0;  // of the marker that is dragged, when that began
    std::uint32_t eventBefore_ = 0;
    std::optional<double> rangeEnd_;
    Shared shared_;
    int searchFlag_ = 0;
    int rebuildRows_ = 0;
    int keepSort_ = 0;
};
