#include "workbench/cli/Info.h"

#include <CLI/CLI.hpp>
#include <iomanip>
#include <memory>
#include <nlohmann/json.hpp>

#include "platform/base/Automation.h"
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

void AddTotals(const service::Totals& totals, Json& json) {
    json["events"] = totals.events;
    json["dispatches"] = totals.dispatches;
    json["state_changes"] = totals.stateChanges;
    json["system_calls"] = totals.systemCalls;
}

void WriteJson(const Summary& summary, std::int64_t origin, std::ostream& out) {
    Json json;
    json["file"] = summary.path;
    json["format"] = summary.format;
    json["processors"] = Json::array();
    for (const auto& totals : summary.byProcessor) json["processors"].push_back(totals.processor);
    json["shown"] = summary.shownProcessor;
    json["records"] = summary.records;
    json["contexts"] = summary.contexts;
    AddTotals(summary.totals, json);
    json["by_processor"] = Json::array();
    for (const auto& totals : summary.byProcessor) {
        Json row = {{"processor", totals.processor}};
        AddTotals(totals, row);
        json["by_processor"].push_back(row);
    }
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

// Where there are several.
void WriteProcessors(const Summary& summary, std::ostream& out) {
    if (summary.byProcessor.size() < 2) return;
    const auto write = [&](const auto&... cells) {
        ((out << std::right << std::setw(15) << cells), ...) << '\n';
    };
    write("processor", "events", "dispatches", "state changes", "system calls");
    for (const auto& totals : summary.byProcessor)
        write(totals.processor, totals.events, totals.dispatches, totals.stateChanges,
              totals.systemCalls);
}

void WriteText(const Summary& summary, const service::TraceClock& clock, std::int64_t origin,
               std::ostream& out) {
    std::string processors;
    for (const auto& totals : summary.byProcessor)
        processors.append(processors.empty() ? "" : ", ").append(std::to_string(totals.processor));
    if (summary.byProcessor.size() > 1)
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
    WriteRow(out, "events", summary.totals.events);
    WriteRow(out, "dispatches", summary.totals.dispatches);
    WriteRow(out, "state changes", summary.totals.stateChanges);
    WriteRow(out, "system calls", summary.totals.systemCalls);
    WriteProcessors(summary, out);
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
