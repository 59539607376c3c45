#include "workbench/cli/JUnit.h"

#include "platform/base/Text.h"

namespace kvx::cli {
namespace {

std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '&')
            escaped += "&amp;";
        else if (c == '<')
            escaped += "&lt;";
        else if (c == '>')
            escaped += "&gt;";
        else if (c == '"')
            escaped += "&quot;";
        else
            escaped += byte < 0x20 && c != '\n' && c != '\t' ? ' ' : c;
    }
    return escaped;
}

struct Case {
    std::string group;
    std::string name;
    std::vector<std::string> failures;
};

std::vector<Case> CasesOf(const timing::FindingList& list,
                          const std::vector<timing::FindingKind>& failOn) {
    std::vector<Case> cases;
    for (const auto& rule : list.rules) {
        const auto dot = rule.rule.rfind('.');
        Case each{rule.rule.substr(0, dot), rule.rule.substr(dot + 1), {}};
        for (const auto& violation : list.violations)
            if (violation.rule == rule.rule) each.failures.push_back(violation.sentence);
        cases.push_back(std::move(each));
    }
    for (const auto kind : failOn) {
        Case each{"findings", std::string(timing::FindingKindName(kind)), {}};
        for (const auto& finding : list.findings)
            if (finding.kind == kind) each.failures.push_back(finding.sentence);
        cases.push_back(std::move(each));
    }
    return cases;
}

}  // namespace

void WriteJUnit(std::ostream& out, const std::string& recording, const timing::FindingList& list,
                const std::vector<timing::FindingKind>& failOn) {
    const auto cases = CasesOf(list, failOn);
    std::size_t failed = 0;
    for (const Case& each : cases)
        if (!each.failures.empty()) ++failed;
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites>\n"
        << FormatText("  <testsuite name=\"%s\" tests=\"%zu\" failures=\"%zu\">\n",
                      Escaped(recording).c_str(), cases.size(), failed);
    for (const Case& each : cases) {
        out << FormatText("    <testcase classname=\"%s\" name=\"%s\"", Escaped(each.group).c_str(),
                          Escaped(each.name).c_str());
        if (each.failures.empty()) {
            out << "/>\n";
            continue;
        }
        out << FormatText(">\n      <failure message=\"%s\">",
                          Escaped(each.failures.front()).c_str());
        for (const auto& failure : each.failures) out << Escaped(failure) << '\n';
        out << "</failure>\n    </testcase>\n";
    }
    out << "  </testsuite>\n</testsuites>\n";
}

}  // namespace kvx::cli
