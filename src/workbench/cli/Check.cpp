#include "workbench/cli/Check.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fstream>
#include <map>
#include <memory>

#include "workbench/cli/JUnit.h"
#include "workbench/cli/RecordingModel.h"
#include "workbench/cli/TimingJson.h"
#include "workbench/timing/SuggestRules.h"
#include "workbench/timing/Times.h"

namespace kvx::cli {
namespace {

using timing::Finding;
using timing::FindingKind;
using timing::FindingList;

constexpr int kSchema = 1;

Json JsonOfRules(const FindingList& list) {
    Json rules = Json::array();
    for (const auto& rule : list.rules)
        rules.push_back({{"rule", rule.rule},
                         {"examined", rule.examined},
                         {"open", rule.open},
                         {"violated", rule.violated},
                         {"worst", JsonOf(rule.worst)},
                         {"limit", JsonOf(rule.limit)}});
    return rules;
}

void WriteJson(const timing::Model& model, const FindingList& list, std::ostream& out) {
    Json json;
    json["schema"] = kSchema;
    json["rules"] = JsonOfRules(list);
    for (const auto& [key, findings] :
         {std::pair("violations", &list.violations), {"findings", &list.findings}}) {
        json[key] = Json::array();
        for (const Finding& finding : *findings) json[key].push_back(JsonOfFinding(model, finding));
    }
    json["accepted"] = list.accepted;
    json["notes"] = list.notes;
    out << Dump(json) << '\n';
}

class TextWriter {
  public:
    TextWriter(const timing::Model& model, std::ostream& out) : model_(model), out_(out) {}

    void Write(const FindingList& list) const {
        if (!list.rules.empty()) {
            out_ << "Rules: " << list.rules.size() << ", of which "
                 << std::ranges::count_if(list.rules, [](const auto& r) { return r.violated > 0; })
                 << " are violated\n";
            for (const auto& rule : list.rules) WriteRule(rule);
        }
        WriteList("Violations", list.violations);
        WriteList("Findings", list.findings);
        if (list.accepted > 0)
            out_ << '\n'
                 << list.accepted
                 << (list.accepted == 1 ? " accepted finding is hidden.\n"
                                        : " accepted findings are hidden.\n");
        if (!list.notes.empty()) out_ << '\n';
        for (const auto& note : list.notes) out_ << "Note: " << note << '\n';
    }

  private:
    static constexpr std::size_t kMostOfKind = 10;

    void WriteRule(const timing::RuleResult& rule) const {
        out_ << (rule.violated ? "  VIOLATED  " : "  kept      ") << rule.rule << ": "
             << rule.examined << " examined";
        if (rule.open) out_ << ", " << rule.open << " open";
        if (rule.violated) out_ << ", " << rule.violated << " violated";
        out_ << '\n';
    }

    // Of many of a kind the first ones.
    void WriteList(const char* title, const std::vector<Finding>& findings) const {
        out_ << '\n' << title << ": " << findings.size() << '\n';
        std::map<std::pair<FindingKind, std::string>, std::size_t> written;
        for (const Finding& finding : findings)
            if (++written[{finding.kind, finding.rule}] <= kMostOfKind) WriteFinding(finding);
        for (const auto& [key, count] : written)
            if (count > kMostOfKind)
                out_ << "  and " << count - kMostOfKind << " more of "
                     << (key.second.empty() ? std::string(FindingKindName(key.first)) : key.second)
                     << " (--json lists them)\n";
    }

    void WriteFinding(const Finding& finding) const {
        out_ << "  " << model_.Recording().Clock().Format(finding.start) << "  "
             << (finding.rule.empty() ? std::string(FindingKindName(finding.kind)) : finding.rule)
             << ": " << finding.sentence << '\n';
    }

    const timing::Model& model_;
    std::ostream& out_;
};

std::vector<FindingKind> KindsOf(const std::vector<std::string>& names) {
    std::vector<FindingKind> kinds;
    for (const auto& name : names) kinds.push_back(*timing::FindingKindOf(name));
    return kinds;
}

// Those of other processors go; what is about none stays.
void KeepProcessor(FindingList& list, std::optional<std::uint32_t> timeline) {
    if (!timeline) return;
    for (auto* findings : {&list.violations, &list.findings})
        std::erase_if(*findings, [&](const Finding& finding) {
            return finding.timeline && finding.timeline != timeline;
        });
}

bool Fails(const FindingList& list, const std::vector<FindingKind>& failOn) {
    return !list.violations.empty() || std::ranges::any_of(list.findings, [&](const Finding& each) {
        return std::ranges::count(failOn, each.kind) > 0;
    });
}

bool WriteReport(const CheckOptions& options, const FindingList& list,
                 const std::vector<FindingKind>& failOn, const Streams& streams) {
    if (options.junit.empty()) return true;
    std::ofstream file(options.junit, std::ios::binary);
    WriteJUnit(file, options.trace.path, list, failOn);
    file.close();
    if (!file) streams.error << "kvxostrace: " << options.junit << ": cannot be written\n";
    return static_cast<bool>(file);
}

std::string CheckKind(const std::string& name) {
    if (timing::FindingKindOf(name)) return {};
    std::string known;
    for (int kind = 0; kind < timing::kFindingKinds; ++kind)
        known.append(known.empty() ? "" : " ")
            .append(FindingKindName(static_cast<FindingKind>(kind)));
    return "'" + name + "' is no kind of finding; there are " + known;
}

}  // namespace

void AddCheck(CLI::App& app, const Streams& streams, int& status) {
    const auto options = std::make_shared<CheckOptions>();
    auto* command = app.add_subcommand(
        "check", "Look for what is wrong, and whether the recording keeps to its rules");
    AddTraceOptions(*command, options->trace);
    command->add_option("--rules", options->rules, "Rules file (TOML)");
    command
        ->add_option("--fail-on", options->failOn,
                     "Exit with 5 on findings of these kinds: KIND,...")
        ->delimiter(',')
        ->check(CLI::Validator(CheckKind, "KIND"));
    auto* junit =
        command->add_option("--junit", options->junit, "Write a JUnit report, a test case a rule");
    auto* json = command->add_flag("--json", options->json, "Write JSON; times are counts");
    command
        ->add_flag("--suggest", options->suggest,
                   "Write a rules file that this recording keeps to, with a fifth to spare")
        ->excludes(json)
        ->excludes(junit);
    command->callback([options, streams, &status] { status = RunCheck(*options, streams); });
}

int RunCheck(const CheckOptions& options, const Streams& streams) {
    int status = kExitDone;
    const auto service = OpenTrace(options.trace, streams, status);
    if (!service) return status;
    const auto made = MakeModel(*service->Decoded(), options.rules, streams, status);
    if (!made.model) return status;
    const timing::Model& model = *made.model;
    if (options.suggest) {
        streams.out << timing::SuggestRules(model);
        return FinalStatus(options.trace, service->Losses(), streams);
    }
    FindingList list = timing::FindAll(model, made.rules);
    KeepProcessor(list, TimelineOf(model.Decoded(), options.trace.processors));
    const auto failOn = KindsOf(options.failOn);
    if (!WriteReport(options, list, failOn, streams)) return kExitFailed;
    if (options.json)
        WriteJson(model, list, streams.out);
    else
        TextWriter(model, streams.out).Write(list);
    const int final = FinalStatus(options.trace, service->Losses(), streams);
    return final != kExitFailed && Fails(list, failOn) ? kExitViolated : final;
}

}  // namespace kvx::cli
