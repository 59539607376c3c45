#include "workbench/service/Summary.h"

#include <algorithm>
#include <set>

#include "workbench/service/DecodedRecording.h"

namespace kvx::service {
namespace {

ProcessorTotals Count(const Timeline& timeline) {
    const EventStore& events = timeline.events;
    ProcessorTotals totals;
    totals.processor = timeline.processor;
    totals.events = events.Count();
    totals.dispatches = events.Dispatches(events.Count()).size();
    totals.systemCalls = events.Calls(events.Count()).size();
    totals.stateChanges = totals.events - totals.dispatches - totals.systemCalls;
    return totals;
}

// A context that several processors know counts once.
std::uint32_t CountContexts(const DecodedRecording& decoded) {
    std::set<ContextKey> keys;
    for (const auto& timeline : decoded.Timelines())
        for (std::uint32_t i = 0; i < timeline->contexts.Count(); ++i)
            keys.insert(timeline->contexts.Get(i).key);
    return static_cast<std::uint32_t>(keys.size());
}

std::int64_t FirstTime(const DecodedRecording& decoded) {
    std::int64_t first = decoded.GetRecording().LastTime();
    bool any = false;
    for (const auto& timeline : decoded.Timelines()) {
        if (timeline->events.Count() == 0) continue;
        first = std::min(first, timeline->events.Time(0));
        any = true;
    }
    return any ? first : decoded.GetRecording().FirstTime();
}

}  // namespace

const ProcessorTotals& Summary::Shown() const {
    return *std::ranges::find(byProcessor, shownProcessor, &ProcessorTotals::processor);
}

Summary Summarize(const DecodedRecording& decoded) {
    decoded.WaitForAll();
    const Recording& recording = decoded.GetRecording();
    Summary summary;
    summary.path = recording.Path();
    summary.format = recording.FormatName();
    summary.records = recording.CountInFile();
    summary.contexts = CountContexts(decoded);
    for (const auto& timeline : decoded.Timelines()) {
        const auto totals = summary.byProcessor.emplace_back(Count(*timeline));
        summary.totals.events += totals.events;
        summary.totals.dispatches += totals.dispatches;
        summary.totals.stateChanges += totals.stateChanges;
        summary.totals.systemCalls += totals.systemCalls;
    }
    summary.firstTime = FirstTime(decoded);
    summary.lastTime = recording.LastTime();
    summary.timeUnit = recording.Clock().UnitName();
    summary.losses = decoded.Losses();
    return summary;
}

}  // namespace kvx::service
