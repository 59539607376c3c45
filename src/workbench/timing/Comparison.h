#pragma once
// Two recordings side by side, context by context.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/service/Result.h"
#include "workbench/timing/Findings.h"
#include "workbench/timing/JobFigures.h"

namespace kvx::timing {

// One figure of both recordings. Times in nanoseconds where both have a clock, else in counts.
struct Pair {
    std::optional<double> before;
    std::optional<double> after;
    // after / before; none where one is missing or before is 0 and after is not.
    std::optional<double> Ratio() const;
};

struct ComparedContext {
    std::string name;
    std::string type;
    bool inOld = false;
    bool inNew = false;
    Pair jobs;
    Pair load;
    Pair cet[3];  // median, p99, max
    Pair rt[3];
};

struct Comparison {
    std::vector<ComparedContext> contexts;    // by type and name
    std::vector<const Finding*> newFindings;  // of the new recording; borrowed
};

struct ComparedRecording {
    const Model& model;
    const FindingList& findings;
};
Comparison Compare(const ComparedRecording& before, const ComparedRecording& after);

// "[CONTEXT:]PARAM.STAT OP NUMBER", such as "MOTOR_CTRL:rt.max > 1.1": jobs and load without STAT.
class Condition {
  public:
    static Result<Condition> Parse(std::string_view text);
    // The contexts of which it holds.
    std::vector<std::string> HoldsFor(const Comparison& comparison) const;
    // Empty: any.
    const std::string& Context() const { return context_; }

  private:
    std::string context_;
    std::string parameter_;
    int statistic_ = 0;
    std::string operator_;
    double number_ = 0;
};

}  // namespace kvx::timing
