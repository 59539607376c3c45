#pragma once
// Which column a table was sorted by, and each column's own last direction.

#include <map>
#include <optional>

namespace kvx {

inline constexpr int kNeverSorted = 0;
inline constexpr int kSortedAscending = 1;
inline constexpr int kSortedDescending = 2;

class SortState {
  public:
    void Reset() { *this = SortState{}; }
    // -1: none.
    int Column() const { return column_; }
    int State(int column) const {
        const auto at = states_.find(column);
        return at == states_.end() ? kNeverSorted : at->second;
    }

    // Whether a sort by the column ascends: a new click turns the column's own last direction
    // round, again repeats it. Nothing when there is no sort to repeat.
    std::optional<bool> Begin(int column, int again) {
        int& state = states_[column];
        if (again && state == kNeverSorted) return std::nullopt;
        if (!again) state = state == kSortedAscending ? kSortedDescending : kSortedAscending;
        column_ = column;
        return state == kSortedAscending;
    }

  private:
    std::map<int, int> states_;
    int column_ = -1;
};

}  // namespace kvx
