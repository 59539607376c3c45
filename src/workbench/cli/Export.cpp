#include "workbench/cli/Export.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>

#include "workbench/exports/ExportFile.h"
#include "workbench/service/TimeArgument.h"

namespace kvx::cli {
namespace {

// Restricts the request to what the options say. Answers what is wrong with them; empty: nothing.
std::string Restrict(const ExportOptions& options, exports::ExportRequest& request) {
    const auto& clock = request.decoded.GetRecording().Clock();
    for (auto [text, time] :
         {std::pair{&options.start, &request.start}, {&options.end, &request.end}}) {
        if (text->empty()) continue;
        const auto parsed = service::ParseTime(*text, clock);
        if (!parsed) return parsed.GetError().message;
        *time = *parsed;
    }
    if (request.start > request.end) return "the range ends before it starts";
    if (const auto number = options.trace.processors.Number())
        std::erase_if(request.timelines, [&](const service::Timeline* timeline) {
            return timeline->processor != *number;
        });
    return {};
}

}  // namespace

void AddExport(CLI::App& app, const Streams& streams, int& status) {
    const auto options = std::make_shared<ExportOptions>();
    auto* command =
        app.add_subcommand("export", "Write a trace, or a range of it, in the form of other tools");
    AddTraceOptions(*command, options->trace);
    std::vector<std::string> forms;
    for (const auto* exporter : exports::Exporters()) forms.emplace_back(exporter->name);
    command->add_option("--to", options->to, "Form to write")
        ->required()
        ->check(CLI::IsMember(forms));
    command->add_option("-o,--output", options->output, "File to write, or - for standard output")
        ->capture_default_str();
    command->add_option("--start", options->start,
                        "Start of the range: a count, or a time as 1.5ms");
    command->add_option("--end", options->end, "End of the range; both ends are included");
    command->add_flag("--arrows", options->arrows,
                      "perfetto: arrows from who makes a task ready to its run; they make viewers "
                      "slow");
    command->callback([options, streams, &status] { status = RunExport(*options, streams); });
}

int RunExport(const ExportOptions& options, const Streams& streams) {
    int status = kExitDone;
    const auto service = OpenTrace(options.trace, streams, status);
    if (!service) return status;
    const service::DecodedRecording& decoded = *service->Decoded();
    decoded.WaitForAll();
    auto request = exports::WholeOf(decoded);
    request.arrows = options.arrows;
    if (const auto fault = Restrict(options, request); !fault.empty()) {
        streams.error << "kvxostrace: " << fault << '\n';
        return kExitUsage;
    }
    const auto& exporter = *exports::FindExporter(options.to);
    if (options.output == "-") {
        exporter.write(request, streams.out);
    } else if (const auto failure = exports::WriteFiles(exporter, request, options.output)) {
        streams.error << "kvxostrace: " << failure->message << '\n';
        return kExitFailed;
    }
    return FinalStatus(options.trace, decoded.Losses(), streams);
}

}  // namespace kvx::cli
