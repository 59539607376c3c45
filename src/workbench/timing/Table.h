#pragma once
// The tables of jobs, waits and locks. Each covers all processors unless one is selected.

#include <memory>
#include <span>

#include "analyze/model/Analysis.h"
#include "workbench/timing/Model.h"
#include "workbench/timing/Rules.h"

namespace kvx::timing {

// What a table is made of; all borrowed.
struct TableInput {
    const Model& model;
    const Rules& rules;
    Selection selection;
    std::vector<ContextId> among;  // rows of these only; empty: of all
    std::int64_t every = 0;        // load: length of a slice
    std::int64_t window = 0;       // load: length of the stretch for the peak

    bool Has(ContextId context) const;
    // For people; empty for none.
    std::string Time(const std::optional<std::int64_t>& count) const;
    std::string Name(ContextId context) const;
};

// Its rows never change.
class Table : public Analysis {
  public:
    std::uint64_t Revision() const override { return 0; }
    // The event, of any processor, that the cell speaks of. Columns behind the last: the row.
    virtual std::optional<EventRef> PlaceOf(int row, int column) const = 0;
    // What belongs to the table as a whole, for JSON.
    virtual Members Summary() const { return {}; }
};

struct TableEntry {
    const AnalysisForm* form;
    std::unique_ptr<Table> (*make)(const TableInput& input);
};
// The index of tables: one line each.
std::span<const TableEntry> Tables();

}  // namespace kvx::timing
