#include "workbench/exports/RunStack.h"

#include "host/OSTraceService.h"

namespace kvx::exports {

using service::EventStore;
using service::kNoContext;

RunStack::RunStack(const service::Timeline& timeline, std::int64_t time) : timeline_(timeline) {
    const EventStore& events = timeline.events;
    const auto all = events.Dispatches(events.Count());
    if (all.empty()) return;
    const auto first = events.Context(all.front());
    if (IsHandler(first))
        handlers_.push_back(first);
    else
        below_ = first;
    for (const auto dispatch : events.Dispatches(events.CountUntil(time - 1)))
        Apply(events.Context(dispatch), events.Next(dispatch));
}

RunStack::Move RunStack::Apply(std::uint32_t from, std::uint32_t to) {
    const bool inHandler = !handlers_.empty() && handlers_.back() == from;
    if (IsHandler(to)) {
        const auto depth = handlers_.size();
        if (inHandler && depth > 1 && handlers_[depth - 2] == to) {
            handlers_.pop_back();
            return Move::Leave;
        }
        handlers_.push_back(to);
        return Move::Enter;
    }
    const bool unknown = timeline_.contexts.Get(to).type == kContextUnknown;
    const bool back = to == below_ || (unknown && below_ == kNoContext);
    const bool leaves = inHandler && handlers_.size() == 1 && back;
    handlers_.clear();
    below_ = to;
    return leaves ? Move::Leave : Move::Switch;
}

bool RunStack::IsHandler(std::uint32_t context) const {
    return timeline_.contexts.Get(context).type == kContextHandler;
}

}  // namespace kvx::exports
