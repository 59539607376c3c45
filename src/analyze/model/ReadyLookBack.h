#pragma once
// Since when each context has been ready at the start of a range: the last event at or before the
// start that made it ready, be it a state change or a dispatch of another context.

#include <optional>
#include <vector>

#include "host/OSTraceService.h"
#include "host/TraceCodes.h"
#include "trace/EventReader.h"

namespace kvx {

// Walks the events downwards from the start as far as it is asked, once for all contexts together.
template <class Events>
class ReadyLookBack {
  public:
    ReadyLookBack(const Events& events, std::uint32_t start)
        : events_(events), unread_(std::uint64_t{start} + 1) {}

    const Events& Reader() const { return events_; }
    // Nothing when the context was never made ready.
    std::optional<std::uint32_t> Find(std::uint32_t context) {
        while (!Known(context) && unread_ > 0) Read(static_cast<std::uint32_t>(--unread_));
        return Known(context) ? readyAt_[context] : std::nullopt;
    }

  private:
    bool Known(std::uint32_t context) const {
        return context < readyAt_.size() && readyAt_[context].has_value();
    }
    void Read(std::uint32_t event) {
        const int kind = events_.Kind(event);
        if (kind == kEventDispatch) Note(events_.Context(event), event);
        const bool ready =
            kind == kEventState && events_.State(event) == host::Code(host::StateCode::Ready);
        if (ready) Note(events_.StateContext(event), event);
    }
    void Note(std::uint32_t context, std::uint32_t event) {
        if (context == kNoLine || Known(context)) return;
        if (context >= readyAt_.size()) readyAt_.resize(std::size_t{context} + 1);
        readyAt_[context] = event;
    }

    const Events& events_;
    std::uint64_t unread_;  // events below this are not read yet
    std::vector<std::optional<std::uint32_t>> readyAt_;
};

}  // namespace kvx
