#pragma once
// Text keys of table rows, and the order of the rows by the bytes of their keys.

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analyze/model/SortState.h"
#include "platform/Text.h"

namespace kvx {

// Longest key, in characters.
inline constexpr std::size_t kMaxKey = 255;

// Keys whose order by bytes is the order of the numbers, and that no text of a key comes before but
// the empty one.
std::string NumberKey(std::int64_t value);
std::string NumberKey(double value);

class SortKeys {
  public:
    void Reserve(std::size_t rows, std::size_t bytesPerRow);
    // The key of the next row. No key holds a zero byte.
    void Add(std::string_view key);
    // The rows, numbered as they were added, in the order of their keys. Rows with equal keys keep
    // the order of before: that of the rows given, or the order in which they were added.
    std::vector<std::uint32_t> Order(bool ascending, std::vector<std::uint32_t> before = {}) const;

  private:
    // Eight bytes of a key, the first the most significant, and the row.
    struct Item {
        std::uint64_t bytes;
        std::uint32_t row;
    };
    std::uint64_t Bytes(std::uint32_t row, std::size_t from) const;
    void SortFrom(Item* begin, Item* end, std::size_t from, bool ascending) const;

    std::string text_;
    std::vector<std::size_t> ends_;
};

// Sorts display rows by keyOf(row) and writes the direction into each.
template <class Row, class KeyOf>
void SortRows(std::vector<Row>& rows, int direction, KeyOf keyOf) {
    SortKeys keys;
    for (Row& row : rows) {
        row.direction = direction;
        keys.Add(Utf8Prefix(keyOf(row), kMaxKey));
    }
    std::vector<Row> sorted;
    sorted.reserve(rows.size());
    for (const std::uint32_t at : keys.Order(direction == kAscending)) sorted.push_back(rows[at]);
    rows = std::move(sorted);
}

}  // namespace kvx
