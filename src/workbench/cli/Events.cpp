#include "workbench/cli/Events.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "workbench/service/EventTexts.h"

namespace kvx::cli {
namespace {

const char* KindName(std::int32_t kind) {
    switch (kind) {
        case kEventDispatch:
            return "dispatch";
        case kEventState:
            return "state";
        default:
            return "syscall";
    }
}

// Tabs and line ends separate cells and rows: inside a cell they become blanks.
std::string Cell(std::string text) {
    std::ranges::replace_if(
        text, [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
    return text;
}

// The events of several processors in order of time; where times are equal, in that of the records
// that gave them, as far as that is known, and of the processors.
class EventMerge {
  public:
    explicit EventMerge(const std::vector<const service::Timeline*>& timelines) {
        for (const auto* timeline : timelines) places_.push_back({timeline});
    }

    struct Event {
        const service::Timeline* timeline = nullptr;
        std::uint32_t number = 0;
    };
    // None: that was all.
    std::optional<Event> Next() {
        Place* first = nullptr;
        for (Place& place : places_)
            if (place.next < place.timeline->events.Count() &&
                (!first || place.Key() < first->Key()))
                first = &place;
        if (!first) return std::nullopt;
        first->record = first->Key().second;
        return Event{first->timeline, first->next++};
    }

  private:
    struct Place {
        const service::Timeline* timeline;
        std::uint32_t next = 0;
        std::uint32_t record = 0;  // the latest one so far

        // A wait names the record of the call that waits, which is an earlier one.
        std::pair<std::int64_t, std::uint32_t> Key() const {
            const auto& events = timeline->events;
            const auto by = events.RecordOf(next);
            return {events.Time(next), by == service::kNoRecord ? record : std::max(record, by)};
        }
    };
    std::vector<Place> places_;
};

void WriteEvent(const service::DecodedRecording& decoded, std::uint32_t number,
                const EventMerge::Event& event, std::ostream& out) {
    const service::Timeline& timeline = *event.timeline;
    const service::EventStore& events = timeline.events;
    const auto context = timeline.contexts.DisplayName(events.Context(event.number));
    const auto detail = service::EventTexts(decoded, timeline).Detail(event.number);
    out << number << '\t' << events.Time(event.number) << '\t'
        << KindName(events.Kind(event.number)) << '\t' << Cell(context) << '\t' << Cell(detail)
        << '\t' << timeline.processor << '\n';
}

std::vector<const service::Timeline*> Chosen(const service::DecodedRecording& decoded,
                                             const ProcessorChoice& choice) {
    std::vector<const service::Timeline*> chosen;
    for (const auto& timeline : decoded.Timelines())
        if (choice.Number().value_or(timeline->processor) == timeline->processor)
            chosen.push_back(timeline.get());
    return chosen;
}

}  // namespace

void AddEvents(CLI::App& app, const Streams& streams, int& status) {
    const auto options = std::make_shared<EventsOptions>();
    auto* command = app.add_subcommand(
        "events", "List the decoded events of all processors, with tabs between columns");
    AddTraceOptions(*command, options->trace);
    command->add_option("--from", options->from, "First event to list");
    command->add_option("--count", options->count, "How many events to list");
    command->callback([options, streams, &status] { status = RunEvents(*options, streams); });
}

int RunEvents(const EventsOptions& options, const Streams& streams) {
    int status = kExitDone;
    const auto service = OpenTrace(options.trace, streams, status);
    if (!service) return status;
    const service::DecodedRecording& decoded = *service->Decoded();
    decoded.WaitForAll();
    streams.out << "event\ttime\tkind\tcontext\tdetail\tcpu\n";
    EventMerge merge(Chosen(decoded, options.trace.processors));
    const auto end = std::uint64_t{options.from} + options.count;
    for (std::uint32_t number = 0; number < end && streams.out; ++number) {
        const auto event = merge.Next();
        if (!event) break;
        if (number >= options.from) WriteEvent(decoded, number, *event, streams.out);
    }
    return FinalStatus(options.trace, decoded.Losses(), streams);
}

}  // namespace kvx::cli
