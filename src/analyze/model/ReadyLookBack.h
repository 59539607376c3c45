#pragma once
// Whether each context is ready at the start of a range, and since when: from its last state before
// the start, and the dispatches that took the processor from it afterwards. One that waits, is
// suspended or dormant does not become ready by losing the processor; nor does one of which no
// state is known, or that loses it where the recording has a gap, to nobody knows whom.

#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "host/OSTraceService.h"
#include "trace/EventReader.h"

namespace kvx {

// Walks the events downwards from the start as far as it is asked, once for all contexts together.
template <class Events>
class ReadyLookBack {
  public:
    // isUnknown: whether a line is that of the unidentified context.
    ReadyLookBack(const Events& events, std::uint32_t start,
                  std::function<bool(std::uint32_t)> isUnknown)
        : events_(events), isUnknown_(std::move(isUnknown)), unread_(std::uint64_t{start} + 1) {}

    const Events& Reader() const { return events_; }
    // The event that made the context ready; none where it was not, or where that is not recorded.
    std::optional<std::uint32_t> Find(std::uint32_t context) { return Look(context).ready; }
    // Whether the context's last state before the start lets it become ready by losing the
    // processor.
    bool CanBeReady(std::uint32_t context) { return Look(context).canBeReady; }

  private:
    struct Past {
        bool known = false;  // its last state was come across
        bool canBeReady = false;
        std::optional<std::uint32_t> lost;   // the last dispatch away from it
        std::optional<std::uint32_t> ready;  // known: what made it ready
    };
    const Past& Look(std::uint32_t context) {
        while (!PastOf(context).known && unread_ > 0) Read(static_cast<std::uint32_t>(--unread_));
        return PastOf(context);
    }
    Past& PastOf(std::uint32_t context) {
        if (context >= pasts_.size()) pasts_.resize(std::size_t{context} + 1);
        return pasts_[context];
    }
    void Read(std::uint32_t event) {
        const int kind = events_.Kind(event);
        if (kind == kEventDispatch) {
            const auto context = events_.Context(event);
            gap_ |= isUnknown_(events_.Next(event));
            if (context == kNoLine || PastOf(context).known) return;
            Past& past = PastOf(context);
            past.known = gap_;
            if (!past.lost) past.lost = event;
        } else if (kind == kEventState) {
            const auto context = events_.StateContext(event);
            if (context == kNoLine || PastOf(context).known) return;
            Past& past = PastOf(context);
            past.known = true;
            past.canBeReady = events_.IsReady(event) && !gap_;
            if (past.canBeReady)
                past.ready = past.lost ? past.lost : event;
            else if (events_.IsReady(event) && !past.lost)
                past.ready = event;
        }
    }

    const Events& events_;
    const std::function<bool(std::uint32_t)> isUnknown_;
    bool gap_ = false;      // one was come across
    std::uint64_t unread_;  // events below this are not read yet
    std::vector<Past> pasts_;
};

}  // namespace kvx
