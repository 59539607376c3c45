#include "workbench/desktop/timing/FindingsTable.h"

#include <algorithm>
#include <iterator>

namespace kvx::desktop {
namespace {

using enum ValueKind;

enum Column { kSeverity, kKind, kContexts, kProcessor, kStart, kLength, kSentence };
constexpr AnalysisColumn kColumns[] = {
    {"severity", "Severity", 8},        {"kind", "Kind", 18},      {"contexts", "Contexts", 22},
    {"processor", "CPU", 4, Number},    {"start", "At", 20, Time}, {"length", "Length", 11, Time},
    {"sentence", "What was found", 60},
};

// "priority inversion".
std::string KindName(timing::FindingKind kind) {
    std::string name(timing::FindingKindName(kind));
    std::ranges::replace(name, '_', ' ');
    return name;
}

}  // namespace

const AnalysisForm kFindingsForm = {"findings", "findings", "Findings", kColumns};

FindingsTable::FindingsTable(std::shared_ptr<const TimingFacts> facts) : facts_(std::move(facts)) {}

const timing::Finding& FindingsTable::FindingOf(int row) const {
    const auto at = static_cast<std::size_t>(row);
    const auto& violations = facts_->found.violations;
    return at < violations.size() ? violations[at] : facts_->found.findings[at - violations.size()];
}

int FindingsTable::RowCount() const {
    return static_cast<int>(facts_->found.violations.size() + facts_->found.findings.size());
}

CString FindingsTable::Cell(int row, int column) const {
    const timing::Finding& finding = FindingOf(row);
    const auto& clock = facts_->decoded->GetRecording().Clock();
    switch (column) {
        case kSeverity:
            return CString(timing::SeverityName(finding.severity));
        case kKind:
            return finding.rule.empty() ? KindName(finding.kind) : finding.rule;
        case kContexts: {
            CString names;
            for (const timing::ContextId id : finding.contexts)
                names.append(names.empty() ? "" : ", ") += facts_->model->AllContexts().NameOf(id);
            return names;
        }
        case kProcessor:
            return finding.timeline ? std::to_string(facts_->model->ProcessorOf(*finding.timeline))
                                    : CString();
        case kStart:
            return clock.Format(finding.start);
        case kLength:
            return facts_->Input().Time(finding.end - finding.start);
        default:
            return finding.sentence;
    }
}

std::int64_t FindingsTable::SortNumber(int row, int column) const {
    const timing::Finding& finding = FindingOf(row);
    if (column == kStart) return finding.start;
    if (column == kLength) return finding.end - finding.start;
    return finding.timeline ? std::int64_t{*finding.timeline} : kNoSortNumber;
}

Members FindingsTable::Values(int row) const {
    Members values;
    for (std::size_t c = 0; c < std::size(kColumns); ++c)
        values.emplace_back(kColumns[c].key, Cell(row, static_cast<int>(c)));
    return values;
}

}  // namespace kvx::desktop
