#include "workbench/timing/Table.h"

#include "workbench/timing/TableForms.h"

namespace kvx::timing {

std::span<const TableEntry> Tables() {
    static const TableEntry kTables[] = {
        {&kTimingForm, &MakeTimingTable}, {&kJobsForm, &MakeJobsTable},
        {&kWaitsForm, &MakeWaitsTable},   {&kLocksForm, &MakeLocksTable},
        {&kErrorsForm, &MakeErrorsTable}, {&kLoadForm, &MakeLoadTable},
    };
    return kTables;
}

}  // namespace kvx::timing
