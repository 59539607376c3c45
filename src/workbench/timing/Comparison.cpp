#include "workbench/timing/Comparison.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <map>

#include "workbench/timing/Load.h"

namespace kvx::timing {
namespace {

constexpr std::array<std::string_view, 3> kStatistics = {"median", "p99", "max"};
using Key = std::pair<std::string, std::string>;  // type, name

class Comparer {
  public:
    Comparer(const ComparedRecording& before, const ComparedRecording& after)
        : before_(before), after_(after) {
        const auto& one = before.model.Recording().Clock();
        const auto& other = after.model.Recording().Clock();
        inTime_ = one.Known() && other.Known();
    }

    Comparison Run() {
        Add(before_.model, true);
        Add(after_.model, false);
        Comparison comparison;
        for (auto& [key, context] : contexts_) comparison.contexts.push_back(std::move(context));
        FindNew(comparison);
        return comparison;
    }

  private:
    // Contexts of one name are told apart by their numbers.
    void Add(const Model& model, bool isOld) {
        const Selection all{model.Range(), std::nullopt};
        const Load load(model, all);
        for (ContextId id = 0; id < model.AllContexts().Count(); ++id) {
            const auto& info = model.AllContexts().Get(id);
            if ((!info.IsTask() && !info.IsHandler()) || model.AllJobs().CountOf(id) == 0) continue;
            const auto name = model.AllContexts().NameOf(id);
            ComparedContext& context = contexts_[{std::string(info.TypeName()), name}];
            context.name = name;
            context.type = info.TypeName();
            (isOld ? context.inOld : context.inNew) = true;
            const JobFigures figures = FiguresOf(model, all, id);
            const auto set = [&](Pair& pair, double value) {
                (isOld ? pair.before : pair.after) = value;
            };
            set(context.jobs, static_cast<double>(figures.jobs));
            set(context.load, load.ShareOf(id));
            const double unit =
                inTime_ ? static_cast<double>(model.Recording().Clock().NanosecondsPerCount()) : 1;
            const auto setAll = [&](Pair(&pairs)[3], const std::optional<Statistics>& s) {
                if (!s) return;
                set(pairs[0], static_cast<double>(s->median) * unit);
                set(pairs[1], static_cast<double>(s->p99) * unit);
                set(pairs[2], static_cast<double>(s->max) * unit);
            };
            setAll(context.cet, figures.Of(Figure::Cet));
            setAll(context.rt, figures.Of(Figure::Rt));
        }
    }

    // Findings are the same where kind, rule and contexts are.
    void FindNew(Comparison& comparison) const {
        const auto keyOf = [](const Model& model, const Finding& finding) {
            std::string key = std::string(FindingKindName(finding.kind)) + "\n" + finding.rule;
            for (const auto id : finding.contexts) key += "\n" + model.AllContexts().NameOf(id);
            return key;
        };
        std::map<std::string, int> known;
        for (const auto* list : {&before_.findings.violations, &before_.findings.findings})
            for (const Finding& finding : *list) known[keyOf(before_.model, finding)] = 1;
        for (const auto* list : {&after_.findings.violations, &after_.findings.findings})
            for (const Finding& finding : *list)
                if (known.emplace(keyOf(after_.model, finding), 1).second)
                    comparison.newFindings.push_back(&finding);
    }

    const ComparedRecording& before_;
    const ComparedRecording& after_;
    bool inTime_ = false;
    std::map<Key, ComparedContext> contexts_;
};

std::string_view Trimmed(std::string_view text) {
    while (text.starts_with(' ')) text.remove_prefix(1);
    while (text.ends_with(' ')) text.remove_suffix(1);
    return text;
}

}  // namespace

std::optional<double> Pair::Ratio() const {
    if (!before || !after) return std::nullopt;
    if (*before == 0) return *after == 0 ? std::optional(1.0) : std::nullopt;
    return *after / *before;
}

Comparison Compare(const ComparedRecording& before, const ComparedRecording& after) {
    return Comparer(before, after).Run();
}

Result<Condition> Condition::Parse(std::string_view text) {
    const auto fail = [&](const std::string& why) {
        return Error{"'" + std::string(text) + "' is no condition: " + why};
    };
    const auto at = text.find_first_of("<>=!");
    if (at == std::string_view::npos) return fail("write it as 'rt.max > 1.1'");
    Condition condition;
    auto left = Trimmed(text.substr(0, at));
    auto right = text.substr(at);
    for (const std::string_view op : {"<=", ">=", "==", "!=", "<", ">"}) {
        if (!right.starts_with(op)) continue;
        condition.operator_ = op;
        right.remove_prefix(op.size());
        break;
    }
    if (condition.operator_.empty()) return fail("there are <, <=, >, >=, == and !=");
    right = Trimmed(right);
    const auto [end, error] =
        std::from_chars(right.data(), right.data() + right.size(), condition.number_);
    if (error != std::errc() || end != right.data() + right.size())
        return fail("a number stands behind " + condition.operator_);
    if (const auto colon = left.rfind(':'); colon != std::string_view::npos) {
        condition.context_ = Trimmed(left.substr(0, colon));
        left = Trimmed(left.substr(colon + 1));
    }
    const auto dot = left.find('.');
    condition.parameter_ = left.substr(0, dot);
    const bool plain = condition.parameter_ == "jobs" || condition.parameter_ == "load";
    const bool timed = condition.parameter_ == "cet" || condition.parameter_ == "rt";
    if (!plain && !timed) return fail("there are jobs, load, cet and rt");
    if (plain && dot == std::string_view::npos) return condition;
    const auto statistic = dot == std::string_view::npos ? "" : left.substr(dot + 1);
    const auto known = std::ranges::find(kStatistics, statistic);
    if (plain || known == kStatistics.end())
        return fail("cet and rt have .median, .p99 and .max, jobs and load none of them");
    condition.statistic_ = static_cast<int>(known - kStatistics.begin());
    return condition;
}

std::vector<std::string> Condition::HoldsFor(const Comparison& comparison) const {
    std::vector<std::string> names;
    for (const ComparedContext& context : comparison.contexts) {
        if (!context_.empty() && context.name != context_) continue;
        const Pair& pair = parameter_ == "jobs"   ? context.jobs
                           : parameter_ == "load" ? context.load
                           : parameter_ == "cet"  ? context.cet[statistic_]
                                                  : context.rt[statistic_];
        const auto ratio = pair.Ratio();
        if (!ratio) continue;
        const bool holds = operator_ == "<"    ? *ratio < number_
                           : operator_ == "<=" ? *ratio <= number_
                           : operator_ == ">"  ? *ratio > number_
                           : operator_ == ">=" ? *ratio >= number_
                           : operator_ == "==" ? *ratio == number_
                                               : *ratio != number_;
        if (holds) names.push_back(context.name);
    }
    return names;
}

}  // namespace kvx::timing
