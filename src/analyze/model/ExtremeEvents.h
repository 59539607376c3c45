#pragma once
// The events at which a record's longest (or shortest) interval occurred, to be visited in turn.

#include <cstdint>
#include <optional>
#include <vector>

#include "trace/TraceSource.h"

class COSMarker;

namespace kvx {

class ExtremeEvents {
  public:
    // An interval of length d that ended at the event, against the longest so far.
    void NoteLongest(double& longest, double d, std::uint32_t event) {
        if (d < longest) return;
        if (d > longest) Restart();
        longest = d;
        Append(event);
    }
    // Against the shortest so far, of which 0.0 means none: what follows a shortest of length zero
    // takes its place.
    void NoteShortest(double& shortest, double d, std::uint32_t event) {
        if (d > shortest && shortest != 0.0) return;
        if (d < shortest || shortest == 0.0) Restart();
        shortest = d;
        Append(event);
    }
    // In the order found.
    const std::vector<std::uint32_t>& Events() const { return events_; }
    std::optional<std::uint32_t> First() const {
        return events_.empty() ? std::nullopt : std::optional(events_.front());
    }

    // Sends the indicator to the next of the events and invalidates the view.
    void GoToNext(COSMarker& marker, IViewSender* view);
    // 1 when the indicator's time is that of one of the events.
    int HasIndicator(const COSMarker& marker) const;

  private:
    void Restart() {
        events_.clear();
        ascending_ = true;
    }
    void Append(std::uint32_t event);

    std::vector<std::uint32_t> events_;
    std::size_t cursor_ = 0;
    bool ascending_ = true;
    mutable std::vector<std::uint32_t> sorted_;  // made when events_ are not ascending
};

}  // namespace kvx
