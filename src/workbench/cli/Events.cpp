#include "workbench/cli/Events.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "workbench/service/EventMerge.h"
#include "workbench/service/EventTexts.h"

namespace kvx::cli {
namespace {

// Tabs and line ends separate cells and rows: inside a cell they become blanks.
std::string Cell(std::string text) {
    std::ranges::replace_if(
        text, [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
    return text;
}

void WriteEvent(const service::DecodedRecording& decoded, const service::Timeline& timeline,
                std::uint32_t number, const service::EventMerge::Event& event, std::ostream& out) {
    const service::EventStore& events = timeline.events;
    const auto context = timeline.contexts.DisplayName(events.Context(event.number));
    const auto detail = service::EventTexts(decoded, timeline).Detail(event.number);
    out << number << '\t' << events.Time(event.number) << '\t'
        << service::EventKindName(events.Kind(event.number)) << '\t' << Cell(context) << '\t'
        << Cell(detail) << '\t' << timeline.processor << '\n';
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
    const auto chosen = Chosen(decoded, options.trace.processors);
    service::EventMerge merge(chosen);
    const auto end = std::uint64_t{options.from} + options.count;
    for (std::uint32_t number = 0; number < end && streams.out; ++number) {
        const auto event = merge.Next();
        if (!event) break;
        if (number >= options.from)
            WriteEvent(decoded, *chosen[event->timeline], number, *event, streams.out);
    }
    return FinalStatus(options.trace, decoded.Losses(), streams);
}

}  // namespace kvx::cli
