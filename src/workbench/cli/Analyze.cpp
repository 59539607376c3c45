#include "workbench/cli/Analyze.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>

#include "workbench/cli/AnalysisTables.h"
#include "workbench/cli/RecordingSource.h"
#include "workbench/cli/TerminalView.h"
#include "workbench/cli/TimeArgument.h"

namespace kvx::cli {
namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kNoEvent = "there is no event in the range";

class Analysis {
  public:
    Analysis(const AnalyzeOptions& options, const Streams& streams, service::TraceService& service)
        : options_(options), streams_(streams), service_(service), source_(service) {
        for (const auto which : {EAnalysis::RunTime, EAnalysis::RdyToRun, EAnalysis::SysCall}) {
            if (options_.table == "all" || options_.table == kNames[static_cast<int>(which)])
                tables_.emplace_back(data_, which);
        }
    }

    // Answers what is wrong with the options; empty: nothing.
    std::string Prepare() {
        Open();
        std::string fault = SetRange();
        return fault.empty() ? Sort() : fault;
    }

    // Writes one table; false, and why, where it cannot be written.
    bool WriteCsv();
    // Members of a JSON object, each behind the indentation. One row at a time: there may be
    // millions.
    void WriteJson(const std::string& indent);
    void WriteText();

  private:
    // Decodes the whole trace. A trace without records has empty tables.
    void Open() {
        TerminalView view(streams_);
        double first = 0.0;
        double end = 0.0;
        double analysed = 0.0;
        int advanced = 0;
        if (!data_.engine.Open(&view)) return;
        data_.engine.GetTimes(&first, &end, &analysed);
        data_.engine.AnalyzeUpTo(&view, end + 1.0, &advanced);
        data_.contexts.Load();
    }

    // Answers what is wrong with the range; empty: nothing.
    std::string SetRange() {
        std::uint32_t count = 0;
        service_.GetEventCount(&count);
        if (count == 0) return {};
        std::int64_t start = 0;
        std::int64_t end = service_.GetRecording()->LastTime();
        service_.GetEventTime(0, &start);
        for (auto [text, time] : {std::pair{&options_.start, &start}, {&options_.end, &end}}) {
            if (text->empty()) continue;
            const auto parsed = ParseTime(*text, service_.GetRecording()->Clock());
            if (!parsed) return parsed.GetError().message;
            *time = *parsed;
        }
        if (start > end) return "the range starts after its end";
        // Without an end the range goes on behind the last event, to the end of the recording.
        if (options_.end.empty()) data_.markers.EndRangeAt(static_cast<double>(end));
        data_.markers.MoveStartIntoDisplay(nullptr, static_cast<double>(start));
        data_.markers.MoveEndIntoDisplay(nullptr, static_cast<double>(end));
        const auto first = static_cast<std::int64_t>(data_.markers.GetMarkerTime(kMarkerStart));
        const auto last = static_cast<std::int64_t>(data_.markers.GetMarkerTime(kMarkerEnd));
        const bool inside = start <= first && first <= last && last <= end;
        return inside ? "" : kNoEvent;
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
        for (AnalysisTable& table : tables_) {
            sorted |= table.Sort(column, direction == ":desc");
            for (const auto& c : table.Columns()) known.append(known.empty() ? "" : " ") += c.name;
        }
        return sorted ? "" : "there is no column '" + column + "'; there are " + known;
    }

    // Every column as wide as its widest text.
    void WriteTable(const AnalysisTable& table) {
        std::vector<std::string> titles;
        std::vector<std::size_t> widths;
        for (const auto& column : table.Columns()) {
            titles.emplace_back(column.title);
            widths.push_back(titles.back().size());
        }
        for (int row = 0; row < table.RowCount(); ++row) {
            const std::vector<std::string> texts = table.Texts(row);
            for (std::size_t c = 0; c < texts.size(); ++c)
                widths[c] = std::max(widths[c], Characters(texts[c]));
        }
        streams_.out << '\n' << table.Title() << '\n';
        WriteRow(table, titles, widths);
        for (int row = 0; row < table.RowCount(); ++row) WriteRow(table, table.Texts(row), widths);
    }

    void WriteRow(const AnalysisTable& table, const std::vector<std::string>& texts,
                  const std::vector<std::size_t>& widths) {
        std::string line;
        for (std::size_t c = 0; c < texts.size(); ++c) {
            const std::string blanks(widths[c] - Characters(texts[c]), ' ');
            const bool right = table.Columns()[c].right;
            line.append(c ? "  " : "");
            line.append(right ? blanks : "").append(texts[c]).append(right ? "" : blanks);
        }
        line.erase(line.find_last_not_of(' ') + 1);
        streams_.out << line << '\n';
    }

    static std::size_t Characters(const std::string& text) {
        return static_cast<std::size_t>(
            std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
    }

    static constexpr const char* kNames[] = {"run-time", "rdy-run", "syscalls"};

    const AnalyzeOptions& options_;
    const Streams& streams_;
    service::TraceService& service_;
    RecordingSource source_;
    COSTraceData data_{source_};
    std::vector<AnalysisTable> tables_;
};

bool Analysis::WriteCsv() {
    const CCsvWriter writer(source_, data_.engine, data_.contexts, data_.runTime, data_.rdyToRun,
                            data_.sysCalls);
    const EAnalysis which = tables_.front().Which();
    if (options_.csv == "-") {
        writer.WriteLines(which, [this](std::string_view line) {
            streams_.out << line;
            return streams_.out.good();
        });
        return true;  // the final status looks at the stream
    }
    CCsvWriter::Failure failure;
    if (writer.Write(which, options_.csv, &failure)) return true;
    streams_.error << "kvxostrace: " << options_.csv << ": "
                   << (failure.opened ? "cannot be written: " : "cannot be opened: ")
                   << failure.reason << '\n';
    return false;
}

void Analysis::WriteJson(const std::string& indent) {
    const kvx::AnalysisRange range = data_.markers.Range();
    const Json json = {{"start", static_cast<std::int64_t>(range.start)},
                       {"end", static_cast<std::int64_t>(range.end)}};
    streams_.out << indent << "\"range\": " << json.dump();
    for (const AnalysisTable& table : tables_) {
        streams_.out << ",\n" << indent << "\"" << table.Key() << "\": [";
        for (int row = 0; row < table.RowCount(); ++row) {
            streams_.out << (row ? ",\n" : "\n") << indent << "  "
                         << table.Json(row).dump(-1, ' ', false, Json::error_handler_t::replace);
        }
        if (table.RowCount()) streams_.out << "\n" << indent;
        streams_.out << "]";
    }
    streams_.out << "\n";
}

void Analysis::WriteText() {
    const kvx::AnalysisRange range = data_.markers.Range();
    const COSTrace& engine = data_.engine;
    streams_.out << "Mark: " << engine.TimeText(range.start) << " - " << engine.TimeText(range.end)
                 << " = " << engine.TimeText(range.end - range.start) << '\n';
    for (const AnalysisTable& table : tables_) WriteTable(table);
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
        Analysis analysis(options, streams, service);
        const std::string fault = analysis.Prepare();
        if (fault.empty()) {
            work(analysis, processor, worked++ == 0);
            continue;
        }
        streams.error << "kvxostrace: ";
        if (all) streams.error << "processor " << processor << ": ";
        streams.error << fault << '\n';
        if (fault != kNoEvent) return kExitUsage;
    }
    return worked > 0 ? kExitDone : kExitUsage;
}

int WriteCsv(const AnalyzeOptions& options, const Streams& streams,
             service::TraceService& service) {
    bool written = true;
    const int status = ForEachProcessor(
        options, streams, service,
        [&](Analysis& analysis, std::uint32_t, bool) { written = analysis.WriteCsv(); });
    return status == kExitDone && !written ? kExitFailed : status;
}

int WriteJson(const AnalyzeOptions& options, const Streams& streams,
              service::TraceService& service) {
    std::ostream& out = streams.out;
    if (!options.trace.processors.IsAll()) {
        return ForEachProcessor(options, streams, service,
                                [&](Analysis& analysis, std::uint32_t, bool) {
                                    out << "{\n";
                                    analysis.WriteJson("  ");
                                    out << "}\n";
                                });
    }
    const int status = ForEachProcessor(
        options, streams, service, [&](Analysis& analysis, std::uint32_t processor, bool first) {
            out << (first ? "{\n  \"processors\": [\n" : ",\n")
                << "    {\n      \"processor\": " << processor << ",\n";
            analysis.WriteJson("      ");
            out << "    }";
        });
    if (status == kExitDone) out << "\n  ]\n}\n";
    return status;
}

int WriteText(const AnalyzeOptions& options, const Streams& streams,
              service::TraceService& service) {
    return ForEachProcessor(
        options, streams, service, [&](Analysis& analysis, std::uint32_t processor, bool first) {
            if (options.trace.processors.IsAll())
                streams.out << (first ? "" : "\n") << "Processor " << processor << '\n';
            analysis.WriteText();
        });
}

}  // namespace

void AddAnalyze(CLI::App& app, const Streams& streams, int& status) {
    const auto options = std::make_shared<AnalyzeOptions>();
    auto* command = app.add_subcommand(
        "analyze", "Show who had the processor, who waited for it, and what was called");
    AddTraceOptions(*command, options->trace);
    command->add_option("--table", options->table, "Table to show")
        ->check(CLI::IsMember({"run-time", "rdy-run", "syscalls", "all"}))
        ->capture_default_str();
    command->add_option("--start", options->start,
                        "Start of the range: a count, or a time as 1.5ms");
    command->add_option("--end", options->end, "End of the range");
    command->add_option("--sort", options->sort, "Column to sort by, COLUMN or COLUMN:desc");
    auto* csv = command->add_option("--csv", options->csv,
                                    "Write one table as CSV to a file, or - for standard output");
    command->add_flag("--json", options->json, "Write JSON; times are counts")->excludes(csv);
    command->callback([options, streams, &status] {
        if (!options->csv.empty() && options->table == "all")
            throw CLI::ValidationError("--csv", "writes one table: choose it with --table");
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
