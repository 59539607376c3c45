#pragma once
// What the figures of jobs show: those that are late, and those that never get to run.

#include "workbench/timing/Findings.h"
#include "workbench/timing/JobFigures.h"

namespace kvx::timing {

// By context; of the whole recording. Those of handlers are empty.
using AllFigures = std::vector<JobFigures>;

// A finding about one job.
Finding JobFinding(const Model& model, FindingKind kind, ContextId context, const Job& job,
                   std::int64_t measured, std::int64_t limit, const std::string& sentence);

// Jobs that took longer than the period that is told, or, where the task keeps to one, than the one
// that shows. Those with a deadline are left to the rules.
void FindLateJobs(const Model& model, const Rules& rules, const AllFigures& figures,
                  std::vector<Finding>& out);
// Ready without running for longer than ten of the task's periods.
void FindStarvation(const Model& model, const AllFigures& figures, std::vector<Finding>& out);

}  // namespace kvx::timing
