#include "workbench/cli/Analyze.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>

#include "analyze/model/CsvWriter.h"
#include "trace/TraceData.h"
#include "workbench/cli/MarkedRange.h"
#include "workbench/cli/RecordingSource.h"
#include "workbench/cli/TableOutput.h"
#include "workbench/cli/TerminalView.h"
#include "workbench/cli/TimingTables.h"
#include "workbench/service/TimeArgument.h"

namespace kvx::cli {
namespace {

using Json = nlohmann::ordered_json;

class Analyses {
  public:
    Analyses(const AnalyzeOptions& options, const Streams& streams, service::TraceService& service)
        : options_(options), streams_(streams), service_(service), source_(service) {}

    // Answers what is wrong with the options; empty: nothing.
    std::string Prepare() {
        TerminalView view(streams_);
        DecodeAll(data_, view);
        std::string fault = SetRange();
        if (!fault.empty()) return fault;
        for (const SharedAnalysis* const analysis : data_.analyses) {
            if (options_.table == "all" || options_.table == analysis->Form().name)
                tables_.emplace_back(*analysis);
        }
        return Sort();
    }

    // Writes one table; false, and why, where it cannot be written.
    bool WriteCsv();
    // Members of a JSON object, each behind the indentation. One row at a time: there may be
    // millions.
    void WriteJson(const std::string& indent);
    void WriteText();

  private:
    // Answers what is wrong with the range; empty: nothing.
    std::string SetRange() {
        std::optional<std::int64_t> start;
        std::optional<std::int64_t> end;
        for (auto [text, time] : {std::pair{&options_.start, &start}, {&options_.end, &end}}) {
            if (text->empty()) continue;
            const auto parsed = service::ParseTime(*text, service_.GetRecording()->Clock());
            if (!parsed) return parsed.GetError().message;
            *time = *parsed;
        }
        return MarkRange(data_, service_, start, end);
    }

    std::string Sort() {
        if (options_.sort.empty()) return {};
        const std::size_t colon = options_.sort.find(':');
        const std::string column = options_.sort.substr(0, colon);
        const std::string direction = colon == std::string::npos ? "" : options_.sort.substr(colon);
        if (!direction.empty() && direction != ":desc" && direction != ":asc")
            return "--sort takes COLUMN or COLUMN:desc";
        bool sorted = false;
        std::string known;
        for (TableOutput& table : tables_) {
            sorted |= table.Sort(column, direction == ":desc");
            known.append(known.empty() ? "" : " ") += table.ColumnKeys();
        }
        return sorted ? "" : "there is no column '" + column + "'; there are " + known;
    }

    const AnalyzeOptions& options_;
    const Streams& streams_;
    service::TraceService& service_;
    RecordingSource source_;
    COSTraceData data_{source_};
    std::vector<TableOutput> tables_;
};

bool Analyses::WriteCsv() {
    const TableOutput& table = tables_.front();
    const CCsvWriter writer(table.Table(), [&table](int k) { return table.Row(k); });
    if (options_.csv == "-") {
        writer.WriteLines([this](std::string_view line) {
            streams_.out << line;
            return streams_.out.good();
        });
        return true;  // the final status looks at the stream
    }
    CCsvWriter::Failure failure;
    if (writer.Write(options_.csv, &failure)) return true;
    streams_.error << "kvxostrace: " << options_.csv << ": "
                   << (failure.opened ? "cannot be written: " : "cannot be opened: ")
                   << failure.reason << '\n';
    return false;
}

void Analyses::WriteJson(const std::string& indent) {
    const kvx::AnalysisRange range = data_.markers.Range();
    const Json json = {{"start", static_cast<std::int64_t>(range.start)},
                       {"end", static_cast<std::int64_t>(range.end)}};
    streams_.out << indent << "\"range\": " << json.dump();
    for (const TableOutput& table : tables_) {
        streams_.out << ",\n" << indent << "\"" << table.Table().Form().jsonKey << "\": ";
        table.WriteJson(streams_.out, indent);
    }
    streams_.out << "\n";
}

void Analyses::WriteText() {
    const kvx::AnalysisRange range = data_.markers.Range();
    const COSTrace& engine = data_.engine;
    streams_.out << "Mark: " << engine.TimeText(range.start) << " - " << engine.TimeText(range.end)
                 << " = " << engine.TimeText(range.end - range.start) << '\n';
    for (const TableOutput& table : tables_) table.WriteText(streams_.out);
}

// Every processor that is asked for in turn. Of several, one without an event in the range is left
// out, and said so.
template <class Work>
int ForEachProcessor(const AnalyzeOptions& options, const Streams& streams,
                     service::TraceService& service, Work work) {
    const bool all = options.trace.processors.IsAll();
    std::vector<std::uint32_t> processors = service.GetRecording()->Processors();
    if (!all) processors = {service.ShownProcessor()};
    int worked = 0;
    for (const auto processor : processors) {
        service.ShowProcessor(processor);
        Analyses analyses(options, streams, service);
        const std::string fault = analyses.Prepare();
        if (fault.empty()) {
            work(analyses, processor, worked++ == 0);
            continue;
        }
        streams.error << "kvxostrace: ";
        if (all) streams.error << "processor " << processor << ": ";
        streams.error << fault << '\n';
        if (fault != kNoEventInRange) return kExitUsage;
    }
    return worked > 0 ? kExitDone : kExitUsage;
}

int WriteCsv(const AnalyzeOptions& options, const Streams& streams,
             service::TraceService& service) {
    bool written = true;
    const int status = ForEachProcessor(
        options, streams, service,
        [&](Analyses& analyses, std::uint32_t, bool) { written = analyses.WriteCsv(); });
    return status == kExitDone && !written ? kExitFailed : status;
}

int WriteJson(const AnalyzeOptions& options, const Streams& streams,
              service::TraceService& service) {
    std::ostream& out = streams.out;
    if (!options.trace.processors.IsAll()) {
        return ForEachProcessor(options, streams, service,
                                [&](Analyses& analyses, std::uint32_t, bool) {
                                    out << "{\n";
                                    analyses.WriteJson("  ");
                                    out << "}\n";
                                });
    }
    const int status = ForEachProcessor(
        options, streams, service, [&](Analyses& analyses, std::uint32_t processor, bool first) {
            out << (first ? "{\n  \"processors\": [\n" : ",\n")
                << "    {\n      \"processor\": " << processor << ",\n";
            analyses.WriteJson("      ");
            out << "    }";
        });
    if (status == kExitDone) out << "\n  ]\n}\n";
    return status;
}

int WriteText(const AnalyzeOptions& options, const Streams& streams,
              service::TraceService& service) {
    return ForEachProcessor(
        options, streams, service, [&](Analyses& analyses, std::uint32_t processor, bool first) {
            if (options.trace.processors.IsAll())
                streams.out << (first ? "" : "\n") << "Processor " << processor << '\n';
            analyses.WriteText();
        });
}

std::vector<std::string> TableNames() {
    std::vector<std::string> names = {"run-time", "rdy-run", "syscalls", "all"};
    std::ranges::copy(TimingTableNames(), std::back_inserter(names));
    return names;
}

bool IsTimingTable(const std::string& name) {
    const auto names = TimingTableNames();
    return std::ranges::count(names, name) > 0;
}

}  // namespace

void AddAnalyze(CLI::App& app, const Streams& streams, int& status) {
    const auto options = std::make_shared<AnalyzeOptions>();
    auto* command = app.add_subcommand(
        "analyze", "Show who had the processor, who waited for it, and what was called");
    AddTraceOptions(*command, options->trace);
    command->add_option("--table", options->table, "Table to show")
        ->check(CLI::IsMember(TableNames()))
        ->capture_default_str();
    command->add_option("--start", options->start,
                        "Start of the range: a count, or a time as 1.5ms");
    command->add_option("--end", options->end, "End of the range");
    command->add_option("--sort", options->sort, "Column to sort by, COLUMN or COLUMN:desc");
    command->add_option("--task", options->task,
                        "Tables of jobs, waits, errors and load: this task or handler only");
    command->add_option("--rules", options->rules,
                        "Table timing: rules file, for deadlines and ends of jobs");
    command->add_option("--every", options->every, "Table load: length of a slice (else 10ms)");
    command->add_option("--window", options->window,
                        "Table load: length of the stretch for the peak (else 100ms)");
    auto* csv = command->add_option("--csv", options->csv,
                                    "Write one table as CSV to a file, or - for standard output");
    command->add_flag("--json", options->json, "Write JSON; times are counts")->excludes(csv);
    command->callback([options, streams, &status] {
        if (!options->csv.empty() && options->table == "all")
            throw CLI::ValidationError("--csv", "writes one table: choose it with --table");
        if (IsTimingTable(options->table)) {
            status = RunTimingTable(*options, streams);
            return;
        }
        if (!options->csv.empty() && options->trace.processors.IsAll())
            throw CLI::ValidationError("--csv", "writes one processor: choose it with --cpu");
        status = RunAnalyze(*options, streams);
    });
}

int RunAnalyze(const AnalyzeOptions& options, const Streams& streams) {
    int status = kExitDone;
    const auto service = OpenTrace(options.trace, streams, status);
    if (!service) return status;
    const auto write = !options.csv.empty() ? WriteCsv : options.json ? WriteJson : WriteText;
    status = write(options, streams, *service);
    return status == kExitDone ? FinalStatus(options.trace, service->Losses(), streams) : status;
}

}  // namespace kvx::cli
