#pragma once
// An analysis as a script or a terminal wants it: sorted by a column that is named, its rows as
// texts or as JSON.

#include <functional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

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

    // RFC 4180: a header, then the rows; numbers and times as counts, without units.
    void WriteCsv(std::ostream& out) const;
    // The keys of the columns, separated by blanks.
    std::string ColumnKeys() const;

  private:
    std::string Text(int k, std::size_t column) const;

    const Analysis& analysis_;
    RowOrder order_;
};

// The same for so many rows of an analysis, of which rowAt names the one in place k.
void WriteTableCsv(std::ostream& out, const Analysis& analysis, int rows,
                   const std::function<int(int k)>& rowAt);
// "key": value, as JSON.
std::string JsonMember(const Member& member);
std::string JsonTexts(const std::vector<std::string>& texts);

}  // namespace kvx::cli
