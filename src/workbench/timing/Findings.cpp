#include "workbench/timing/Findings.h"

#include <algorithm>

#include "workbench/timing/CallErrors.h"
#include "workbench/timing/FindingWords.h"
#include "workbench/timing/RuleCheck.h"
#include "workbench/timing/Times.h"

namespace kvx::timing {
namespace {

// One for each error of each call of each context.
void FindCallErrors(const Model& model, std::vector<Finding>& out) {
    for (const ErrorGroup& group : ErrorsOf(model, {model.Range(), std::nullopt})) {
        Finding finding;
        finding.kind = FindingKind::CallErrors;
        finding.severity = Severity::Note;
        finding.contexts = {group.context};
        finding.start = group.first;
        finding.end = group.last;
        finding.measured = static_cast<double>(group.count);
        finding.sentence =
            model.AllContexts().NameOf(group.context) + ": " + model.CallName(group.call) +
            " returned " + model.Facts().ErrorName(group.error) +
            (group.count == 1 ? ", once." : ", " + std::to_string(group.count) + " times.");
        finding.evidence = {group.firstEvent};
        if (group.count > 1) finding.evidence.push_back(group.lastEvent);
        out.push_back(std::move(finding));
    }
}

bool IsAccepted(const Rules& rules, const Finding& finding) {
    return std::ranges::any_of(rules.accepts, [&](const AcceptRule& accept) {
        return accept.kind == finding.kind &&
               std::ranges::all_of(accept.contexts, [&](ContextId context) {
                   return std::ranges::count(finding.contexts, context) > 0;
               });
    });
}

void HideAccepted(const Rules& rules, std::vector<Finding>& findings, std::uint64_t& accepted) {
    accepted +=
        std::erase_if(findings, [&](const Finding& finding) { return IsAccepted(rules, finding); });
}

}  // namespace

std::string_view SeverityName(Severity severity) {
    constexpr std::string_view kNames[] = {"note", "warning", "fault"};
    return kNames[static_cast<std::size_t>(severity)];
}

FindingList FindAll(const Model& model, const Rules& rules) {
    FindingList list;
    AllFigures figures;
    const Selection all{model.Range(), std::nullopt};
    for (ContextId id = 0; id < model.AllContexts().Count(); ++id)
        figures.push_back(model.AllContexts().Get(id).IsTask() ? FiguresOf(model, all, id)
                                                               : JobFigures());
    for (const Incident& incident : model.AllIncidents())
        list.findings.push_back(FindingOf(model, incident));
    FindLateJobs(model, rules, figures, list.findings);
    FindStarvation(model, figures, list.findings);
    FindCallErrors(model, list.findings);
    CheckRules(model, rules, list);
    for (auto* findings : {&list.findings, &list.violations}) {
        HideAccepted(rules, *findings, list.accepted);
        std::ranges::stable_sort(*findings, [](const Finding& one, const Finding& other) {
            if (one.severity != other.severity) return one.severity > other.severity;
            return one.start < other.start;
        });
    }
    list.notes = model.Notes();
    if (!model.Recording().Clock().Known())
        list.notes.push_back(
            "The recording has no clock: overload and handler_load are not examined.");
    if (model.Decoded().BasePriorities().Changes().size() == 0)
        list.notes.push_back(
            "The recording tells no priorities: priority_inversion is not examined.");
    return list;
}

}  // namespace kvx::timing
