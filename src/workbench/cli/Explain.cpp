#include "workbench/cli/Explain.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iomanip>
#include <memory>
#include <span>

#include "workbench/cli/RecordingModel.h"
#include "workbench/cli/TimingJson.h"
#include "workbench/service/TimeArgument.h"
#include "workbench/timing/ExplanationLines.h"
#include "workbench/timing/Sentence.h"
#include "workbench/timing/Times.h"

namespace kvx::cli {
namespace {

constexpr int kSchema = 1;

// Which jobs are meant.
class Choice {
  public:
    Choice(const ExplainOptions& options, const timing::Model& model)
        : options_(options), model_(model) {}

    // Empty: message says why.
    std::vector<timing::JobRef> Find(std::string& message) const {
        std::vector<timing::ContextId> among;
        if (!options_.task.empty()) {
            among = model_.AllContexts().Find(options_.task);
            if (among.empty()) {
                message = "there is no task '" + options_.task + "' in the recording";
                return {};
            }
        }
        if (!options_.at.empty()) return At(among, message);
        if (options_.job > 0) return Numbered(among, message);
        const auto timeline = TimelineOf(model_.Decoded(), options_.trace.processors);
        auto worst = timing::WorstJobs(model_, among, timeline, std::max(options_.worst, 1u));
        if (worst.empty()) message = options_.task + " has no complete job in the recording";
        return worst;
    }

  private:
    std::vector<timing::JobRef> At(const std::vector<timing::ContextId>& among,
                                   std::string& message) const {
        const auto time = service::ParseTime(options_.at, model_.Recording().Clock());
        if (!time) {
            message = time.GetError().message;
            return {};
        }
        const auto timeline = TimelineOf(model_.Decoded(), options_.trace.processors);
        if (const auto job = timing::JobAt(model_, *time, timeline, among)) return {*job};
        message = among.empty() ? "no job runs at " + options_.at
                                : options_.task + " is in no job at " + options_.at;
        return {};
    }

    std::vector<timing::JobRef> Numbered(const std::vector<timing::ContextId>& among,
                                         std::string& message) const {
        std::vector<timing::JobRef> jobs;
        for (const auto context : among)
            if (options_.job <= model_.AllJobs().CountOf(context))
                jobs.push_back({context, options_.job - 1});
        if (jobs.empty()) message = options_.task + " has no job " + std::to_string(options_.job);
        if (jobs.size() > 1) jobs.resize(1);
        return jobs;
    }

    const ExplainOptions& options_;
    const timing::Model& model_;
};

class ExplanationWriter {
  public:
    ExplanationWriter(const timing::Model& model, const timing::Rules& rules, std::ostream& out)
        : model_(model), rules_(rules), findings_(timing::FindAll(model, rules)), out_(out) {}

    Json AsJson(const timing::Explanation& explanation) const {
        const timing::Job& job = explanation.job;
        const auto& info = model_.AllContexts().Get(explanation.context);
        const auto deadline = rules_.DeadlineOf(explanation.context);
        Json json;
        json["schema"] = kSchema;
        json["task"] = JsonOfContext(model_, explanation.context);
        json["number"] = info.number;
        json["job"] = job.number;
        json["activation"] = JsonOf(job.activation);
        json["start"] = JsonOf(job.start);
        json["end"] = JsonOf(job.end);
        json["response"] = JsonOf(job.Response());
        json["deadline"] = JsonOf(deadline);
        json["sentence"] = timing::SentenceOf(model_, explanation, deadline);
        json["started_by"] = JsonOfStarter(model_, job);
        json["parts"] = JsonOfParts(model_, explanation);
        json["findings"] = Json::array();
        for (const auto* finding : FindingsOf(explanation))
            json["findings"].push_back(JsonOfFinding(model_, *finding));
        return json;
    }

    void WriteText(const timing::Explanation& explanation) const {
        out_ << timing::SentenceOf(model_, explanation, rules_.DeadlineOf(explanation.context))
             << "\n\n";
        const std::string starter = timing::StarterSentence(model_, explanation.job);
        if (!starter.empty()) out_ << starter << "\n\n";
        WriteLine({"at", "time", "what"});
        for (const timing::ExplanationLine& line : timing::LinesOf(model_, explanation))
            WriteLine(line);
        for (const auto* finding : FindingsOf(explanation))
            out_ << '\n'
                 << timing::FindingKindName(finding->kind) << ": " << finding->sentence << '\n';
    }

  private:
    void WriteLine(const timing::ExplanationLine& line) const {
        out_ << std::right << std::setw(18) << line.at << std::setw(12) << line.time << "  "
             << (line.isMeanwhile ? "  " : "") << line.text << '\n';
    }

    // Those that are about the job.
    std::vector<const timing::Finding*> FindingsOf(const timing::Explanation& explanation) const {
        std::vector<const timing::Finding*> found;
        for (const auto* list : {&findings_.violations, &findings_.findings})
            for (const auto& finding : *list) {
                const bool of =
                    !finding.contexts.empty() && finding.contexts.front() == explanation.context;
                if (of && finding.job == explanation.job.number) found.push_back(&finding);
            }
        return found;
    }

    const timing::Model& model_;
    const timing::Rules& rules_;
    const timing::FindingList findings_;
    std::ostream& out_;
};

}  // namespace

void AddExplain(CLI::App& app, const Streams& streams, int& status) {
    const auto options = std::make_shared<ExplainOptions>();
    auto* command = app.add_subcommand(
        "explain", "Say why a job took as long as it did, in a sentence and part by part");
    AddTraceOptions(*command, options->trace);
    auto* task = command->add_option("--task", options->task, "Task or handler: name or number");
    auto* job = command->add_option("--job", options->job, "Number of the job, from 1")
                    ->check(CLI::PositiveNumber)
                    ->needs(task);
    auto* worst =
        command
            ->add_option("--worst", options->worst,
                         "The jobs with the longest response times: how many, 1 without a number")
            ->expected(0, 1)
            ->default_str("1")
            ->check(CLI::PositiveNumber)
            ->excludes(job)
            ->needs(task);
    command->add_option("--at", options->at, "The job that runs then: a count, or a time as 1.5ms")
        ->excludes(job)
        ->excludes(worst);
    command->add_option("--rules", options->rules, "Rules file, for deadlines and ends of jobs");
    command->add_flag("--json", options->json, "Write JSON; times are counts");
    command->callback([options, streams, &status] {
        if (options->task.empty() && options->at.empty())
            throw CLI::ValidationError("explain", "choose a job with --task or --at");
        status = RunExplain(*options, streams);
    });
}

int RunExplain(const ExplainOptions& options, const Streams& streams) {
    int status = kExitDone;
    const auto service = OpenTrace(options.trace, streams, status);
    if (!service) return status;
    const auto made = MakeModel(*service->Decoded(), options.rules, streams, status);
    if (!made.model) return status;
    std::string message;
    const auto jobs = Choice(options, *made.model).Find(message);
    if (jobs.empty()) {
        streams.error << "kvxostrace: " << options.trace.path << ": " << message << '\n';
        return kExitFailed;
    }
    const ExplanationWriter writer(*made.model, made.rules, streams.out);
    Json list = Json::array();
    for (const auto& job : jobs) {
        const auto explanation = timing::Explain(*made.model, job.context, job.index);
        if (options.json)
            list.push_back(writer.AsJson(explanation));
        else
            writer.WriteText(explanation);
    }
    if (options.json) streams.out << Dump(options.worst > 1 ? list : list.front()) << '\n';
    return FinalStatus(options.trace, service->Losses(), streams);
}

}  // namespace kvx::cli
