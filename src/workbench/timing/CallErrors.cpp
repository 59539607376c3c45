#include "workbench/timing/CallErrors.h"

#include <map>
#include <tuple>

namespace kvx::timing {

std::vector<ErrorGroup> ErrorsOf(const Model& model, const Selection& selection) {
    std::map<std::tuple<ContextId, std::uint32_t, std::uint32_t>, ErrorGroup> groups;
    for (const CallError& error : model.Facts().Errors()) {
        const auto& events = model.Decoded().Timelines()[error.timeline]->events;
        const auto time = events.Time(error.event);
        if (!selection.HasTimeline(error.timeline) || !selection.Has(time, time)) continue;
        const auto context = model.AllContexts().Of(error.timeline, events.Context(error.event));
        ErrorGroup& group = groups[{context, events.Call(error.event), error.name}];
        const EventRef at{error.timeline, error.event};
        if (group.count == 0 || time < group.first) {
            group.first = time;
            group.firstEvent = at;
        }
        if (group.count == 0 || time >= group.last) {
            group.last = time;
            group.lastEvent = at;
        }
        ++group.count;
    }
    std::vector<ErrorGroup> list;
    for (const auto& [key, group] : groups) {
        list.push_back(group);
        std::tie(list.back().context, list.back().call, list.back().error) = key;
    }
    return list;
}

}  // namespace kvx::timing
