#pragma once
// What the tables share: rows that are kept, and cells of times and names.

#include "workbench/timing/Statistics.h"
#include "workbench/timing/Table.h"

namespace kvx::timing {

// How a column shows a row of the table.
template <class Row>
struct Cells {
    std::string (*text)(const TableInput&, const Row&);
    std::int64_t (*number)(const TableInput&, const Row&) = nullptr;  // null: a column of texts
};

template <class Row>
class RowTable : public Table {
  public:
    const AnalysisForm& Form() const override { return form_; }
    int RowCount() const override { return static_cast<int>(rows_.size()); }
    CString Cell(int row, int column) const override {
        return cells_[static_cast<std::size_t>(column)].text(input_, At(row));
    }
    std::int64_t SortNumber(int row, int column) const override {
        const auto number = cells_[static_cast<std::size_t>(column)].number;
        return number ? number(input_, At(row)) : kNoSortNumber;
    }

  protected:
    // cells: as many as the form has columns.
    RowTable(const TableInput& input, const AnalysisForm& form, std::span<const Cells<Row>> cells)
        : input_(input), form_(form), cells_(cells) {}
    const Row& At(int row) const { return rows_[static_cast<std::size_t>(row)]; }

    const TableInput input_;
    std::vector<Row> rows_;

  private:
    const AnalysisForm& form_;
    const std::span<const Cells<Row>> cells_;
};

// kNoSortNumber for none.
std::int64_t NumberOf(const std::optional<std::int64_t>& value);
// "12.50 %".
std::string ShareText(double share);

Value ValueOf(const std::optional<std::int64_t>& value);
// {min, avg, median, p90, p99, max}.
Value ValueOf(const std::optional<Statistics>& statistics);
// Not known where the text is empty.
Value ValueOfText(std::string text);

}  // namespace kvx::timing
