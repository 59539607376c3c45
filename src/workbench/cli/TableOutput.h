#pragma once
// An analysis as a script or a terminal wants it: sorted by a column that is named, its rows as
// texts or as JSON.

#include <ostream>
#include <string>
#include <string_view>

#include "analyze/model/Analysis.h"
#include "analyze/model/RowOrder.h"

namespace kvx::cli {

class TableOutput {
  public:
    // Borrows the analysis, whose rows stay as they are.
    explicit TableOutput(const Analysis& analysis);

    const Analysis& Table() const { return analysis_; }
    // False when the table has no such column.
    bool Sort(std::string_view column, bool descending);
    // The row in place k.
    int Row(int k) const;

    // Title, column titles and rows; every column as wide as its widest text.
    void WriteText(std::ostream& out) const;
    // The rows as a JSON array, each in a line of its own behind the indentation. One at a time:
    // there may be millions.
    void WriteJson(std::ostream& out, const std::string& indent) const;

  private:
    std::string Text(int k, std::size_t column) const;

    const Analysis& analysis_;
    RowOrder order_;
};

}  // namespace kvx::cli
