#include "workbench/cli/TimingTables.h"

#include <algorithm>
#include <fstream>

#include "workbench/cli/RecordingModel.h"
#include "workbench/cli/TableOutput.h"
#include "workbench/service/TimeArgument.h"
#include "workbench/timing/Table.h"

namespace kvx::cli {
namespace {

constexpr int kSchema = 1;
constexpr std::int64_t kMostSlices = 1000000;

class TimingCommand {
  public:
    TimingCommand(const AnalyzeOptions& options, const Streams& streams, const timing::Model& model,
                  const timing::Rules& rules)
        : options_(options), streams_(streams), model_(model), input_{model,
                                                                      rules,
                                                                      {model.Range(), std::nullopt},
                                                                      {},
                                                                      0,
                                                                      0} {}

    // Answers what is wrong with the options; empty: nothing.
    std::string Prepare() {
        input_.selection.timeline = TimelineOf(model_.Decoded(), options_.trace.processors);
        std::string fault;
        auto& range = input_.selection.range;
        TakeTime(options_.start, range.start, fault);
        TakeTime(options_.end, range.end, fault);
        if (fault.empty() && range.start > range.end) fault = "the range starts after its end";
        TakeSteps(fault);
        if (!options_.task.empty()) {
            input_.among = model_.AllContexts().Find(options_.task);
            if (input_.among.empty())
                fault = "there is no task '" + options_.task + "' in the recording";
        }
        return fault;
    }

    // False: it cannot be written, and why is told.
    bool Write(std::string& fault) {
        const auto entry = std::ranges::find(timing::Tables(), options_.table,
                                             [](const auto& each) { return each.form->name; });
        const auto table = entry->make(input_);
        TableOutput output(*table);
        if (!options_.sort.empty() && !Sort(output, fault)) return false;
        if (!options_.csv.empty()) return WriteCsv(output);
        if (options_.json)
            WriteJson(*table, output);
        else
            WriteText(output);
        return true;
    }

  private:
    void TakeTime(const std::string& text, std::int64_t& time, std::string& fault) const {
        if (text.empty()) return;
        const auto parsed = service::ParseTime(text, model_.Recording().Clock());
        if (parsed)
            time = *parsed;
        else
            fault = parsed.GetError().message;
    }

    // 10 ms and 100 ms; without a clock parts of the range.
    void TakeSteps(std::string& fault) {
        const auto& clock = model_.Recording().Clock();
        const auto length = input_.selection.range.end - input_.selection.range.start;
        constexpr std::int64_t kTenMilliseconds = 10000000;
        input_.every =
            clock.Known() ? kTenMilliseconds / clock.NanosecondsPerCount() : length / 100;
        input_.every = std::max<std::int64_t>(input_.every, 1);
        input_.window = 10 * input_.every;
        TakeTime(options_.every, input_.every, fault);
        TakeTime(options_.window, input_.window, fault);
        if (input_.every < 1 || input_.window < 1)
            fault = "--every and --window begin with 1 count";
        const bool slices = options_.table == "load";
        if (fault.empty() && slices && length / input_.every > kMostSlices)
            fault = "that would be more than a million slices: choose a longer --every";
    }

    bool Sort(TableOutput& output, std::string& fault) const {
        const auto colon = options_.sort.find(':');
        const auto direction = colon == std::string::npos ? "" : options_.sort.substr(colon);
        const auto column = options_.sort.substr(0, colon);
        if (!direction.empty() && direction != ":desc" && direction != ":asc")
            fault = "--sort takes COLUMN or COLUMN:desc";
        else if (!output.Sort(column, direction == ":desc"))
            fault = "there is no column '" + column + "'; there are " + output.ColumnKeys();
        return fault.empty();
    }

    bool WriteCsv(const TableOutput& output) const {
        if (options_.csv == "-") {
            output.WriteCsv(streams_.out);
            return true;
        }
        std::ofstream file(options_.csv, std::ios::binary);
        output.WriteCsv(file);
        file.close();
        if (!file) streams_.error << "kvxostrace: " << options_.csv << ": cannot be written\n";
        return static_cast<bool>(file);
    }

    void WriteJson(const timing::Table& table, const TableOutput& output) const {
        std::ostream& out = streams_.out;
        const auto& range = input_.selection.range;
        out << "{\n  \"schema\": " << kSchema << ",\n  \"range\": {\"start\": " << range.start
            << ", \"end\": " << range.end << "},\n  \"" << table.Form().jsonKey << "\": ";
        output.WriteJson(out, "  ");
        for (const auto& member : table.Summary()) out << ",\n  " << JsonMember(member);
        out << ",\n  \"notes\": " << JsonTexts(model_.Notes()) << "\n}\n";
    }

    void WriteText(const TableOutput& output) const {
        const auto& range = input_.selection.range;
        const auto& clock = model_.Recording().Clock();
        streams_.out << "Range: " << clock.Format(range.start) << " - " << clock.Format(range.end)
                     << '\n';
        output.WriteText(streams_.out);
        const auto notes = model_.Notes();
        if (!notes.empty()) streams_.out << '\n';
        for (const auto& note : notes) streams_.out << "Note: " << note << '\n';
    }

    const AnalyzeOptions& options_;
    const Streams& streams_;
    const timing::Model& model_;
    timing::TableInput input_;
};

}  // namespace

std::vector<std::string> TimingTableNames() {
    std::vector<std::string> names;
    for (const auto& entry : timing::Tables()) names.emplace_back(entry.form->name);
    return names;
}

int RunTimingTable(const AnalyzeOptions& options, const Streams& streams) {
    int status = kExitDone;
    const auto service = OpenTrace(options.trace, streams, status);
    if (!service) return status;
    const auto made = MakeModel(*service->Decoded(), options.rules, streams, status);
    if (!made.model) return status;
    TimingCommand command(options, streams, *made.model, made.rules);
    std::string fault = command.Prepare();
    const bool written = fault.empty() && command.Write(fault);
    if (!fault.empty()) {
        streams.error << "kvxostrace: " << fault << '\n';
        return kExitUsage;
    }
    return written ? FinalStatus(options.trace, service->Losses(), streams) : kExitFailed;
}

}  // namespace kvx::cli
