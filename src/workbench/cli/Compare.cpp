#include "workbench/cli/Compare.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <iomanip>
#include <memory>

#include "platform/base/Text.h"
#include "workbench/cli/RecordingModel.h"
#include "workbench/cli/TimingJson.h"
#include "workbench/timing/Comparison.h"

namespace kvx::cli {
namespace {

using timing::ComparedContext;
using timing::Comparison;
using timing::Pair;

constexpr int kSchema = 1;
constexpr std::array<const char*, 3> kStatistics = {"median", "p99", "max"};

Json JsonOfPair(const Pair& pair) {
    return {
        {"old", JsonOf(pair.before)}, {"new", JsonOf(pair.after)}, {"ratio", JsonOf(pair.Ratio())}};
}

Json JsonOfPairs(const Pair (&pairs)[3]) {
    Json json;
    for (std::size_t i = 0; i < kStatistics.size(); ++i)
        json[kStatistics[i]] = JsonOfPair(pairs[i]);
    return json;
}

Json NamesOf(const Comparison& comparison, bool ComparedContext::*has,
             bool ComparedContext::*hasNot) {
    Json names = Json::array();
    for (const auto& context : comparison.contexts)
        if (context.*has && !(context.*hasNot)) names.push_back(context.name);
    return names;
}

void WriteJson(const Comparison& comparison, const timing::Model& after, bool inTime,
               const std::vector<std::string>& failed, std::ostream& out) {
    Json json;
    json["schema"] = kSchema;
    json["time_unit"] = inTime ? "ns" : "counts";
    json["contexts"] = Json::array();
    for (const auto& context : comparison.contexts)
        json["contexts"].push_back({{"context", context.name},
                                    {"type", context.type},
                                    {"jobs", JsonOfPair(context.jobs)},
                                    {"load", JsonOfPair(context.load)},
                                    {"cet", JsonOfPairs(context.cet)},
                                    {"rt", JsonOfPairs(context.rt)}});
    json["new_contexts"] = NamesOf(comparison, &ComparedContext::inNew, &ComparedContext::inOld);
    json["missing_contexts"] =
        NamesOf(comparison, &ComparedContext::inOld, &ComparedContext::inNew);
    json["new_findings"] = Json::array();
    for (const auto* finding : comparison.newFindings)
        json["new_findings"].push_back(JsonOfFinding(after, *finding));
    json["condition_holds_for"] = failed;
    out << Dump(json) << '\n';
}

class TextWriter {
  public:
    TextWriter(std::ostream& out, bool inTime) : out_(out), inTime_(inTime) {}

    void Write(const Comparison& comparison) const {
        Row({"Context", "Figure", "Old", "New", "New/Old"});
        for (const auto& context : comparison.contexts) {
            if (!context.inOld || !context.inNew) continue;
            Figure(context.name, "jobs", context.jobs, &Plain);
            Figure("", "load", context.load, &Share);
            for (std::size_t i = 0; i < kStatistics.size(); ++i)
                Figure("", std::string("CET ") + kStatistics[i], context.cet[i],
                       inTime_ ? &Time : &Plain);
            for (std::size_t i = 0; i < kStatistics.size(); ++i)
                Figure("", std::string("RT ") + kStatistics[i], context.rt[i],
                       inTime_ ? &Time : &Plain);
        }
        for (const auto& context : comparison.contexts) {
            if (!context.inOld) out_ << "New: " << context.name << '\n';
            if (!context.inNew) out_ << "Missing: " << context.name << '\n';
        }
        out_ << "\nNew findings: " << comparison.newFindings.size() << '\n';
        for (const auto* finding : comparison.newFindings)
            out_ << "  " << timing::FindingKindName(finding->kind) << ": " << finding->sentence
                 << '\n';
    }

  private:
    static std::string Plain(double value) { return FormatText("%.0f", value); }
    static std::string Share(double value) { return FormatText("%.2f %%", value * 100); }
    static std::string Time(double nanoseconds) {
        return nanoseconds < 1e6 ? FormatText("%.3f us", nanoseconds / 1e3)
                                 : FormatText("%.3f ms", nanoseconds / 1e6);
    }

    void Row(const std::array<std::string, 5>& cells) const {
        out_ << std::left << std::setw(24) << cells[0] << std::setw(12) << cells[1] << std::right
             << std::setw(14) << cells[2] << std::setw(14) << cells[3] << std::setw(10) << cells[4]
             << '\n';
    }

    void Figure(const std::string& name, const std::string& figure, const Pair& pair,
                std::string (*text)(double)) const {
        const auto of = [&](const std::optional<double>& value) {
            return value ? text(*value) : std::string("-");
        };
        const auto ratio = pair.Ratio();
        Row({name, figure, of(pair.before), of(pair.after),
             ratio ? FormatText("%.3f", *ratio) : std::string("-")});
    }

    std::ostream& out_;
    const bool inTime_;
};

std::string CheckCondition(const std::string& text) {
    const auto condition = timing::Condition::Parse(text);
    return condition ? std::string() : condition.GetError().message;
}

}  // namespace

void AddCompare(CLI::App& app, const Streams& streams, int& status) {
    const auto options = std::make_shared<CompareOptions>();
    auto* command = app.add_subcommand("compare", "Put the figures of two recordings side by side");
    command->add_option("OLD", options->old.path, "Trace: a file or a CTF folder")->required();
    command->add_option("NEW", options->newPath, "The trace to compare with it")->required();
    AddReadingOptions(*command, options->old);
    command->add_option("--rules", options->rules, "Rules file, for both recordings");
    command
        ->add_option("--fail-if", options->failIf,
                     "Exit with 5 where a ratio new / old is so: '[CONTEXT:]PARAM.STAT OP NUMBER', "
                     "as 'MOTOR_CTRL:rt.max > 1.1'")
        ->check(CLI::Validator(CheckCondition, "COND"));
    command->add_flag("--json", options->json, "Write JSON");
    command->callback([options, streams, &status] { status = RunCompare(*options, streams); });
}

int RunCompare(const CompareOptions& options, const Streams& streams) {
    int status = kExitDone;
    TraceOptions newOptions = options.old;
    newOptions.path = options.newPath;
    const auto before = OpenTrace(options.old, streams, status);
    const auto after = before ? OpenTrace(newOptions, streams, status) : nullptr;
    if (!after) return status;
    const auto oldModel = MakeModel(*before->Decoded(), options.rules, streams, status);
    if (!oldModel.model) return status;
    const auto newModel = MakeModel(*after->Decoded(), options.rules, streams, status);
    if (!newModel.model) return status;
    const auto oldFindings = timing::FindAll(*oldModel.model, oldModel.rules);
    const auto newFindings = timing::FindAll(*newModel.model, newModel.rules);
    const auto comparison =
        timing::Compare({*oldModel.model, oldFindings}, {*newModel.model, newFindings});
    const bool inTime =
        oldModel.model->Recording().Clock().Known() && newModel.model->Recording().Clock().Known();
    std::vector<std::string> failed;
    if (!options.failIf.empty())
        failed = timing::Condition::Parse(options.failIf)->HoldsFor(comparison);
    if (options.json)
        WriteJson(comparison, *newModel.model, inTime, failed, streams.out);
    else
        TextWriter(streams.out, inTime).Write(comparison);
    for (const auto& name : failed)
        streams.error << "kvxostrace: " << name << ": " << options.failIf << '\n';
    auto losses = before->Losses();
    losses += after->Losses();
    const int final = FinalStatus(options.old, losses, streams);
    return final != kExitFailed && !failed.empty() ? kExitViolated : final;
}

}  // namespace kvx::cli
