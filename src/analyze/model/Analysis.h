#pragma once
// A table of what the events of a range mean in numbers. Whoever shows it reads columns, rows and
// cells; in which order the rows are shown is the business of who shows them (RowOrder.h).

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/base/Types.h"

namespace kvx {

enum class ValueKind {
    Text,
    Number,
    Time,   // counts of the trace clock
    Share,  // 1 is the whole range
    Bar     // a share, drawn and not written
};

// A longest text of so many characters: the whole of it.
inline constexpr std::size_t kWholeText = static_cast<std::size_t>(-1);

struct AnalysisColumn {
    const char* key;    // in options, for example "max"
    const char* title;  // above the column
    int width;          // in characters, before the user draws it
    ValueKind kind = ValueKind::Text;
    const char* csvTitle = nullptr;     // null: as title
    std::size_t csvWidth = kWholeText;  // characters that a CSV field holds at most
};

// What a table is, before there is one.
struct AnalysisForm {
    const char* name;     // in options, for example "run-time"
    const char* jsonKey;  // of its rows, for example "run_time"
    const char* title;    // for people
    std::span<const AnalysisColumn> columns;
};

struct Value;
using Member = std::pair<const char*, Value>;  // key and value
using Members = std::vector<Member>;

// A value for programs; monostate: it is not known. Times are counts.
struct Value {
    Value() = default;
    template <class Known>
    Value(Known value) : data(std::move(value)) {}

    std::variant<std::monostate, bool, std::int64_t, double, std::string, Members,
                 std::vector<Members>>
        data;
};

// Rows are counted from 0. Rows and columns that an operation is given exist.
class Analysis {
  public:
    virtual ~Analysis() = default;

    virtual const AnalysisForm& Form() const = 0;
    virtual int RowCount() const = 0;
    // False: there is nothing but the titles to show.
    virtual bool IsReadable() const { return true; }
    // As it is shown; leading blanks align it.
    virtual CString Cell(int row, int column) const = 0;
    // What rows are ordered by: of a column of texts the text, of another one the number.
    virtual CString SortText(int row, int column) const { return Cell(row, column); }
    virtual std::int64_t SortNumber(int row, int column) const = 0;
    // All that is known of the row, for JSON.
    virtual Members Values(int row) const = 0;
    // The event that the cell speaks of, where it speaks of one.
    virtual std::optional<std::uint32_t> EventOf(int /*row*/, int /*column*/) const {
        return std::nullopt;
    }

    // A row keeps its id, which ascends by one with the row, for as long as the revision is the
    // same: what was read of it to order rows still holds.
    virtual std::uint32_t FirstId() const { return 0; }
    virtual std::uint64_t Revision() const = 0;
};

// What comes before every number that a cell has: it has none.
inline constexpr std::int64_t kNoSortNumber = INT64_MIN + 1;
// A number whose order is that of the doubles.
std::int64_t SortNumberOf(double value);

}  // namespace kvx
