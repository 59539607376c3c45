#pragma once
// Which column a table was sorted by, and each column's own last direction.

#include <array>
#include <cstddef>
#include <optional>

namespace kvx {

inline constexpr int kNeverSorted = 0;
inline constexpr int kSortedAscending = 1;
inline constexpr int kSortedDescending = 2;

// Direction of a display row.
inline constexpr int kDescending = 0;
inline constexpr int kAscending = 1;

template <std::size_t Columns>
class SortState {
  public:
    void Reset() { *this = SortState{}; }
    // -1: none.
    int Column() const { return column_; }
    int State(int column) const { return states_[static_cast<std::size_t>(column)]; }

    // The direction of a sort by the column: a new click turns the column's own last direction
    // round, again repeats it. Nothing when there is no sort to repeat.
    std::optional<int> Begin(int column, int again) {
        int& state = states_[static_cast<std::size_t>(column)];
        if (again && state == kNeverSorted) return std::nullopt;
        if (!again) state = state == kSortedAscending ? kSortedDescending : kSortedAscending;
        column_ = column;
        return state == kSortedAscending ? kAscending : kDescending;
    }

  private:
    std::array<int, Columns> states_{};
    int column_ = -1;
};

}  // namespace kvx
