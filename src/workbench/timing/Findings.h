#pragma once
// What people should see of a recording, each in a sentence: found without being told what to look
// for, or violating a rule.

#include <optional>
#include <string>
#include <vector>

#include "workbench/timing/Incident.h"
#include "workbench/timing/Model.h"
#include "workbench/timing/Rules.h"

namespace kvx::timing {

enum class Severity : std::uint8_t { Note, Warning, Fault };
// "note", "warning", "fault".
std::string_view SeverityName(Severity severity);

struct Finding {
    FindingKind kind = FindingKind::PriorityInversion;
    std::string rule;  // "task.MOTOR_CTRL.deadline"; empty: found without one
    Severity severity = Severity::Warning;
    std::vector<ContextId> contexts;  // whom it is about first
    std::optional<std::uint32_t> timeline;
    std::int64_t start = 0;
    std::int64_t end = 0;
    std::optional<double> measured;  // counts of time, a share, or how often
    std::optional<double> limit;     // in the same
    std::string sentence;
    std::vector<EventRef> evidence;
    std::uint32_t job = 0;  // number, of the first context; 0: none
};

// How one rule came out.
struct RuleResult {
    std::string rule;
    std::uint64_t examined = 0;  // jobs, or instances of a chain
    std::uint64_t open = 0;      // instances of a chain that lack a link
    std::uint64_t violated = 0;
    std::optional<double> worst;
    std::optional<double> limit;
};

struct FindingList {
    // Both with the most severe first, then by time.
    std::vector<Finding> violations;  // of rules
    std::vector<Finding> findings;    // the other ones
    std::vector<RuleResult> rules;
    std::uint64_t accepted = 0;      // hidden, because the rules say that they are known
    std::vector<std::string> notes;  // what was not examined, one sentence each
};

FindingList FindAll(const Model& model, const Rules& rules);

}  // namespace kvx::timing
