#pragma once
// Pixels of one column that are covered, as intervals that neither overlap nor touch.

#include <algorithm>
#include <vector>

namespace kvx {

// Pixels low to high - 1.
struct Interval {
    int low = 0;
    int high = 0;
    bool Contains(int y) const { return low <= y && y < high; }
};

class Coverage {
  public:
    void Clear() { intervals_.clear(); }
    // The interval that holds the pixel; null when it is not covered.
    const Interval* Find(int y) const {
        const auto at = std::find_if(intervals_.begin(), intervals_.end(),
                                     [y](const Interval& i) { return i.Contains(y); });
        return at == intervals_.end() ? nullptr : &*at;
    }
    bool Contains(Interval wanted) const {
        const Interval* const at = Find(wanted.low);
        return at && wanted.high <= at->high;
    }
    void Add(Interval added) {
        std::erase_if(intervals_, [&added](const Interval& i) {
            if (i.high < added.low || added.high < i.low) return false;
            added = {std::min(added.low, i.low), std::max(added.high, i.high)};
            return true;
        });
        intervals_.push_back(added);
    }

  private:
    std::vector<Interval> intervals_;
};

}  // namespace kvx
