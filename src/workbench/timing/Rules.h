#pragma once
// What a recording must keep to, as a rules file says it.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/service/Result.h"
#include "workbench/timing/Incident.h"
#include "workbench/timing/Jobs.h"

namespace kvx::timing {

// Times are counts.
struct ContextRule {
    std::string name;                 // "task.MOTOR_CTRL"
    std::vector<ContextId> contexts;  // all of that name
    std::optional<std::int64_t> period;
    std::optional<std::int64_t> jitter;
    std::optional<std::int64_t> deadline;
    std::optional<std::int64_t> cet;
    std::optional<std::int64_t> ipt;
    std::optional<std::int64_t> blocked;
    std::optional<JobEnds> ends;
};

// The share of the processors that is busy, in any stretch of that length.
struct LoadRule {
    double load = 1;
    std::int64_t window = 0;
};

struct ChainRule {
    std::string name;  // "chain.NAME"
    std::vector<std::vector<ContextId>> path;
    std::int64_t max = 0;
};

// A finding that is known.
struct AcceptRule {
    FindingKind kind = FindingKind::PriorityInversion;
    std::vector<ContextId> contexts;  // that it is about, among others
    std::string reason;
};

struct Rules {
    std::vector<ContextRule> contexts;
    std::optional<LoadRule> load;
    std::vector<ChainRule> chains;
    std::vector<AcceptRule> accepts;

    // Null: nothing is said of it.
    const ContextRule* Of(ContextId context) const;
    std::optional<std::int64_t> DeadlineOf(ContextId context) const;
    // count: of contexts.
    JobEndRules EndsFor(std::uint32_t count) const;
};

// Text of a rules file. path is for the error, which names line and column of everything that is
// wrong. Names are looked for among the contexts.
Result<Rules> ParseRules(std::string_view text, const std::string& path, const Contexts& contexts,
                         const service::TraceClock& clock);

}  // namespace kvx::timing
