#pragma once
// The tables, as their index lists them.

#include "workbench/timing/Table.h"

namespace kvx::timing {

extern const AnalysisForm kTimingForm;
extern const AnalysisForm kJobsForm;
extern const AnalysisForm kWaitsForm;
extern const AnalysisForm kLocksForm;
extern const AnalysisForm kErrorsForm;
extern const AnalysisForm kLoadForm;

std::unique_ptr<Table> MakeTimingTable(const TableInput& input);
std::unique_ptr<Table> MakeJobsTable(const TableInput& input);
std::unique_ptr<Table> MakeWaitsTable(const TableInput& input);
std::unique_ptr<Table> MakeLocksTable(const TableInput& input);
std::unique_ptr<Table> MakeErrorsTable(const TableInput& input);
std::unique_ptr<Table> MakeLoadTable(const TableInput& input);

}  // namespace kvx::timing
