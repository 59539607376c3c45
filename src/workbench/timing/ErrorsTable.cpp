// Errors that calls returned.

#include "workbench/timing/CallErrors.h"
#include "workbench/timing/TableCells.h"
#include "workbench/timing/TableForms.h"

namespace kvx::timing {
namespace {

std::string TimeOf(const TableInput& input, std::int64_t time) {
    return input.model.Recording().Clock().Format(time);
}

using enum ValueKind;
constexpr AnalysisColumn kColumns[] = {
    {"context", "Context", 16},    {"call", "Call", 16},         {"error", "Error", 12},
    {"count", "Count", 8, Number}, {"first", "First", 20, Time}, {"last", "Last", 20, Time},
};

constexpr Cells<ErrorGroup> kCells[] = {
    {[](const TableInput& input, const ErrorGroup& row) { return input.Name(row.context); }},
    {[](const TableInput& input, const ErrorGroup& row) { return input.model.CallName(row.call); }},
    {[](const TableInput& input, const ErrorGroup& row) {
        return input.model.Facts().ErrorName(row.error);
    }},
    {[](const TableInput&, const ErrorGroup& row) { return std::to_string(row.count); },
     [](const TableInput&, const ErrorGroup& row) { return static_cast<std::int64_t>(row.count); }},
    {[](const TableInput& input, const ErrorGroup& row) { return TimeOf(input, row.first); },
     [](const TableInput&, const ErrorGroup& row) { return row.first; }},
    {[](const TableInput& input, const ErrorGroup& row) { return TimeOf(input, row.last); },
     [](const TableInput&, const ErrorGroup& row) { return row.last; }},
};
static_assert(std::size(kCells) == std::size(kColumns));

class ErrorsTable final : public RowTable<ErrorGroup> {
  public:
    explicit ErrorsTable(const TableInput& input) : RowTable(input, kErrorsForm, kCells) {
        for (const auto& group : ErrorsOf(input.model, input.selection))
            if (input.Has(group.context)) rows_.push_back(group);
    }

    std::optional<EventRef> PlaceOf(int row, int column) const override {
        constexpr int kLast = 5;
        return column == kLast ? At(row).lastEvent : At(row).firstEvent;
    }

    Members Values(int row) const override {
        const ErrorGroup& r = At(row);
        return {{"context", input_.Name(r.context)},
                {"call", input_.model.CallName(r.call)},
                {"error", input_.model.Facts().ErrorName(r.error)},
                {"count", static_cast<std::int64_t>(r.count)},
                {"first", r.first},
                {"last", r.last}};
    }
};

}  // namespace

const AnalysisForm kErrorsForm = {"errors", "errors", "Errors", kColumns};

std::unique_ptr<Table> MakeErrorsTable(const TableInput& input) {
    return std::make_unique<ErrorsTable>(input);
}

}  // namespace kvx::timing
