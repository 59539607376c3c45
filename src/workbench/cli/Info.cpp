#include "workbench/cli/Info.h"

#include <CLI/CLI.hpp>
#include <iomanip>
#include <memory>
#include <nlohmann/json.hpp>

#include "platform/Automation.h"
#include "workbench/service/TraceClock.h"

namespace kvx::cli {
namespace {

using service::Loss;
using service::Summary;
using Json = nlohmann::ordered_json;

// Calls visit with each counter that is not zero.
template <class Visitor>
void VisitCounters(const service::LossCounters& losses, bool isLoss, Visitor visit) {
    for (std::size_t i = 0; i < static_cast<std::size_t>(Loss::Count); ++i) {
        const auto loss = static_cast<Loss>(i);
        const auto& info = service::GetLossInfo(loss);
        if (info.isLoss == isLoss && losses.Get(loss) > 0) visit(info, losses.Get(loss));
    }
}

Json CountersAsJson(const service::LossCounters& losses, bool isLoss) {
    Json counters = Json::object();
    VisitCounters(losses, isLoss, [&](const service::LossInfo& info, std::uint64_t count) {
        counters[std::string(info.name)] = count;
    });
    return counters;
}

void WriteJson(const Summary& summary, std::int64_t origin, std::ostream& out) {
    Json json;
    json["file"] = summary.path;
    json["format"] = summary.format;
    json["processors"] = summary.processors;
    json["shown"] = summary.shownProcessor;
    json["records"] = summary.records;
    json["contexts"] = summary.contexts;
    json["events"] = summary.events;
    json["dispatches"] = summary.dispatches;
    json["state_changes"] = summary.stateChanges;
    json["system_calls"] = summary.systemCalls;
    json["first_time"] = summary.firstTime;
    json["last_time"] = summary.lastTime;
    json["time_unit"] = summary.timeUnit;
    if (origin != 0) json["time_origin"] = origin;
    json["losses"] = CountersAsJson(summary.losses, true);
    json["notes"] = CountersAsJson(summary.losses, false);
    out << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

template <class Value>
void WriteRow(std::ostream& out, const char* name, const Value& value) {
    out << std::left << std::setw(15) << name << value << '\n';
}

void WriteCounters(const Summary& summary, bool isLoss, std::ostream& out) {
    bool any = false;
    VisitCounters(summary.losses, isLoss, [&](const service::LossInfo& info, std::uint64_t count) {
        if (!any) out << (isLoss ? "losses\n" : "notes\n");
        any = true;
        out << "  " << std::left << std::setw(26) << info.name << std::right << std::setw(10)
            << count << "  " << info.help << '\n';
    });
    if (!any && isLoss) WriteRow(out, "losses", "none");
}

void WriteText(const Summary& summary, const service::TraceClock& clock, std::int64_t origin,
               std::ostream& out) {
    std::string processors;
    for (const auto processor : summary.processors)
        processors.append(processors.empty() ? "" : ", ").append(std::to_string(processor));
    if (summary.processors.size() > 1)
        processors += " (shown: " + std::to_string(summary.shownProcessor) + ")";
    const auto timeText = [&](std::int64_t count) {
        auto text = std::to_string(count);
        if (clock.Known()) text += "  (" + clock.Format(count) + ")";
        return text;
    };
    WriteRow(out, "file", summary.path);
    WriteRow(out, "format", summary.format);
    WriteRow(out, "processors", processors);
    WriteRow(out, "records", summary.records);
    WriteRow(out, "contexts", summary.contexts);
    WriteRow(out, "events", summary.events);
    WriteRow(out, "dispatches", summary.dispatches);
    WriteRow(out, "state changes", summary.stateChanges);
    WriteRow(out, "system calls", summary.systemCalls);
    WriteRow(out, "first time", timeText(summary.firstTime));
    WriteRow(out, "last time", timeText(summary.lastTime));
    WriteRow(out, "time unit", summary.timeUnit);
    if (origin != 0)
        WriteRow(out, "time origin", std::to_string(origin) + "  (taken off all times)");
    WriteCounters(summary, true, out);
    WriteCounters(summary, false, out);
}

}  // namespace

void AddInfo(CLI::App& app, const Streams& streams, int& status) {
    const auto options = std::make_shared<InfoOptions>();
    auto* command = app.add_subcommand("info", "Show what a trace holds and what was lost");
    AddTraceOptions(*command, options->trace);
    command->add_flag("--json", options->json, "Write JSON");
    command->callback([options, streams, &status] { status = RunInfo(*options, streams); });
}

int RunInfo(const InfoOptions& options, const Streams& streams) {
    int status = kExitDone;
    const auto service = OpenTrace(options.trace, streams, status);
    if (!service) return status;
    const Summary summary = service->Summarize();
    const service::Recording& recording = *service->GetRecording();
    if (options.json)
        WriteJson(summary, recording.TimeOrigin(), streams.out);
    else
        WriteText(summary, recording.Clock(), recording.TimeOrigin(), streams.out);
    return FinalStatus(options.trace, summary.losses, streams);
}

}  // namespace kvx::cli
