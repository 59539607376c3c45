#include "workbench/cli/Events.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <string>

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

void WriteEvent(service::TraceService& service, std::uint32_t event, std::ostream& out) {
    std::int32_t kind = 0;
    std::int64_t time = 0;
    std::int32_t line = 0;
    service.GetEventKind(event, &kind);
    service.GetEventTime(event, &time);
    service.GetEventContext(event, &line);
    out << event << '\t' << time << '\t' << KindName(kind) << '\t' << Cell(service.LineName(line))
        << '\t' << Cell(service.EventDetail(event)) << '\n';
}

}  // namespace

void AddEvents(CLI::App& app, const Streams& streams, int& status) {
    const auto options = std::make_shared<EventsOptions>();
    auto* command =
        app.add_subcommand("events", "List the decoded events, with tabs between columns");
    AddTraceOptions(*command, options->trace);
    command->add_option("--from", options->from, "First event to list");
    command->add_option("--count", options->count, "How many events to list");
    command->callback([options, streams, &status] { status = RunEvents(*options, streams); });
}

int RunEvents(const EventsOptions& options, const Streams& streams) {
    int status = kExitDone;
    const auto service = OpenTrace(options.trace, streams, status);
    if (!service) return status;
    const auto summary = service->Summarize();
    streams.out << "event\ttime\tkind\tcontext\tdetail\n";
    const auto end =
        std::min<std::uint64_t>(std::uint64_t{options.from} + options.count, summary.events);
    for (auto event = options.from; event < end && streams.out; ++event)
        WriteEvent(*service, event, streams.out);
    return FinalStatus(options.trace, summary.losses, streams);
}

}  // namespace kvx::cli
