#pragma once
// The order of the rows of an analysis by one of its columns. What a column holds is read once:
// another range needs those rows alone that were not read before. The work may be done in pieces.

#include <chrono>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "analyze/model/Analysis.h"

namespace kvx {

// Longest text that rows are ordered by, in characters.
inline constexpr std::size_t kMaxSortText = 255;

class RowOrder {
  public:
    using Clock = std::chrono::steady_clock;

    // So many rows, in their own order.
    void Begin(std::uint32_t rows);
    std::uint32_t RowCount() const { return count_; }
    // Orders them by a column, once Continue has come so far; rows with equal texts or numbers keep
    // the order that they have by then.
    void SortBy(int column, bool ascending) { wanted_.push_back({column, ascending}); }
    bool IsDue() const { return !wanted_.empty(); }
    // Goes on until the deadline; true when nothing is due any more. The analysis has the rows that
    // Begin was told of.
    bool Continue(const Analysis& analysis, Clock::time_point deadline);
    // Empty: in their own order.
    const std::vector<std::uint32_t>& Order() const { return order_; }

  private:
    struct Wanted {
        int column;
        bool ascending;
    };

    bool Read(const Analysis& analysis, Clock::time_point deadline);
    void ForgetAnother(const Analysis& analysis, int column);
    void ReadText(const Analysis& analysis, std::uint32_t row);
    void ReadNumber(const Analysis& analysis, std::uint32_t row);
    void RankTexts();
    void RankNumbers();
    // The rows stand in the order of their numbers, no two of which are equal.
    bool AreNumbersAscending() const;
    void OrderByRank(bool ascending);

    std::uint32_t first_ = 0;  // id of the first row
    std::uint32_t count_ = 0;
    std::vector<std::uint32_t> order_;
    std::vector<Wanted> wanted_;  // the first one is at work
    std::uint32_t next_ = 0;      // row that is read next

    // What was read of a column: texts, each once, and which one it is by id, or numbers by id.
    int column_ = -1;
    bool isText_ = false;
    std::uint64_t revision_ = 0;  // when they were read
    std::unordered_map<std::string, std::uint32_t> texts_;
    std::vector<std::uint32_t> rankOfText_;
    std::vector<std::uint32_t> textOf_;
    std::vector<std::int64_t> numberOf_;
    std::vector<std::uint32_t> ranks_;  // of the rows; equal ones have the same
    std::uint32_t rankCount_ = 0;
};

}  // namespace kvx
