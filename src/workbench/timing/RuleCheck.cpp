#include "workbench/timing/RuleCheck.h"

#include <algorithm>
#include <cstdlib>
#include <map>

#include "platform/base/Text.h"
#include "workbench/timing/Load.h"
#include "workbench/timing/Sentence.h"
#include "workbench/timing/Times.h"

namespace kvx::timing {
namespace {

class Checker {
  public:
    Checker(const Model& model, const Rules& rules, FindingList& out)
        : model_(model), rules_(rules), out_(out) {}

    void Run() {
        for (const ContextRule& rule : rules_.contexts) CheckContext(rule);
        if (rules_.load) CheckLoad(*rules_.load);
        for (const ChainRule& rule : rules_.chains) CheckChain(rule);
    }

  private:
    std::string Time(std::int64_t count) const {
        return TimeText(count, model_.Recording().Clock());
    }
    std::string Exact(std::int64_t count) const {
        return ExactTimeText(count, model_.Recording().Clock());
    }

    void CheckContext(const ContextRule& rule) {
        const auto most = [&](const char* key, const std::optional<std::int64_t>& limit,
                              FindingKind kind, Figure figure, const char* verb, const char* what) {
            if (!limit) return;
            CheckJobs(
                rule, key, kind, *limit, [&](const Job& job) { return FigureOf(job, figure); },
                [&](std::int64_t value) {
                    return verb + Time(value) + ", longer than its " + what + " of " +
                           Exact(*limit);
                });
        };
        most("deadline", rule.deadline, FindingKind::LateJob, Figure::Rt, "took ", "deadline");
        most("cet", rule.cet, FindingKind::CoreTime, Figure::Cet, "ran ", "limit");
        most("ipt", rule.ipt, FindingKind::Pending, Figure::Ipt, "waited to start for ", "limit");
        most("blocked", rule.blocked, FindingKind::Blocked, Figure::Blocked, "was blocked for ",
             "limit");
        if (!rule.period || !rule.jitter) return;
        const auto off = [&](const Job& job) -> std::optional<std::int64_t> {
            if (!job.period) return std::nullopt;
            return std::abs(*job.period - *rule.period);
        };
        CheckJobs(rule, "period", FindingKind::Period, *rule.jitter, off, [&](std::int64_t value) {
            return "was followed by the next one " + Time(value) + " off the period of " +
                   Exact(*rule.period) + ", which may be off by " + Exact(*rule.jitter);
        });
    }

    template <class ValueOf, class Say>
    void CheckJobs(const ContextRule& rule, const char* key, FindingKind kind, std::int64_t limit,
                   ValueOf valueOf, Say say) {
        RuleResult result;
        result.rule = rule.name + "." + key;
        result.limit = static_cast<double>(limit);
        for (const auto context : rule.contexts)
            for (std::size_t i = 0; i < model_.AllJobs().CountOf(context); ++i) {
                const Job job = model_.AllJobs().At(context, i);
                const auto value = job.cut ? std::nullopt : valueOf(job);
                if (!value) continue;
                Count(result, static_cast<double>(*value));
                if (*value <= limit) continue;
                ++result.violated;
                Add(result.rule,
                    JobFinding(model_, kind, context, job, *value, limit, say(*value)));
            }
        out_.rules.push_back(std::move(result));
    }

    static void Count(RuleResult& result, double value) {
        ++result.examined;
        result.worst = std::max(result.worst.value_or(value), value);
    }

    void Add(const std::string& rule, Finding finding) {
        finding.rule = rule;
        finding.severity = Severity::Fault;
        out_.violations.push_back(std::move(finding));
    }

    void CheckLoad(const LoadRule& rule) {
        const LoadPeak peak = Load(model_, {model_.Range(), std::nullopt}).Peak(rule.window);
        RuleResult result;
        result.rule = "cpu.load";
        result.limit = rule.load;
        Count(result, peak.load);
        if (peak.load > rule.load) {
            ++result.violated;
            Finding finding;
            finding.kind = FindingKind::Load;
            finding.start = peak.start;
            finding.end = peak.end;
            finding.measured = peak.load;
            finding.limit = rule.load;
            finding.sentence =
                FormatText("The processors were busy for %.1f %% of ", peak.load * 100) +
                Exact(peak.end - peak.start) + FormatText(", more than %.4g %%.", rule.load * 100);
            Add(result.rule, std::move(finding));
        }
        out_.rules.push_back(std::move(result));
    }

    struct Link {
        ContextId context = kNobody;
        Job job;
    };
    using StarterKey = std::pair<ContextId, std::uint32_t>;  // context and number of its job
    using Started = std::map<StarterKey, Link>;

    // The first job, by activation, of any of the contexts that each job made ready.
    Started StartedAmong(const std::vector<ContextId>& contexts) const {
        Started started;
        for (const auto context : contexts)
            for (std::size_t i = 0; i < model_.AllJobs().CountOf(context); ++i) {
                const Job job = model_.AllJobs().At(context, i);
                if (job.startedByJob == 0) continue;
                const auto [at, isNew] = started.try_emplace(
                    {job.startedBy.context, job.startedByJob}, Link{context, job});
                if (!isNew && job.seen.start < at->second.job.seen.start)
                    at->second = {context, job};
            }
        return started;
    }

    void CheckChain(const ChainRule& rule) {
        RuleResult result;
        result.rule = rule.name;
        result.limit = static_cast<double>(rule.max);
        std::vector<Started> steps;
        for (std::size_t i = 1; i < rule.path.size(); ++i)
            steps.push_back(StartedAmong(rule.path[i]));
        for (const auto context : rule.path.front())
            for (std::size_t i = 0; i < model_.AllJobs().CountOf(context); ++i)
                CheckInstance(rule, steps, {context, model_.AllJobs().At(context, i)}, result);
        out_.rules.push_back(std::move(result));
    }

    void CheckInstance(const ChainRule& rule, const std::vector<Started>& steps, const Link& first,
                       RuleResult& result) {
        Link last = first;
        for (const Started& step : steps) {
            const auto at = step.find({last.context, last.job.number});
            if (at == step.end()) {
                ++result.open;
                return;
            }
            last = at->second;
        }
        if (!first.job.activation || !last.job.end) {
            ++result.open;
            return;
        }
        const auto time = *last.job.end - *first.job.activation;
        Count(result, static_cast<double>(time));
        if (time <= rule.max) return;
        ++result.violated;
        Finding finding =
            JobFinding(model_, FindingKind::Chain, first.context, first.job, time, rule.max,
                       "led to the end of " + JobName(model_, last.context, last.job.number) +
                           " after " + Time(time) + ", later than " + Exact(rule.max));
        finding.contexts.push_back(last.context);
        finding.end = *last.job.end;
        finding.evidence.push_back(last.job.event);
        Add(result.rule, std::move(finding));
    }

    const Model& model_;
    const Rules& rules_;
    FindingList& out_;
};

}  // namespace

void CheckRules(const Model& model, const Rules& rules, FindingList& out) {
    Checker(model, rules, out).Run();
}

}  // namespace kvx::timing
