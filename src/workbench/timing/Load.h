#pragma once
// Who had the processors, slice by slice.

#include <vector>

#include "workbench/timing/Model.h"

namespace kvx::timing {

struct LoadSlice {
    std::int64_t start = 0;
    std::int64_t end = 0;
    double idle = 0;
    double handlers = 0;                               // all of them together
    std::vector<std::pair<ContextId, double>> shares;  // in the order of contexts; idle left out
};

struct LoadPeak {
    std::int64_t start = 0;
    std::int64_t end = 0;
    double load = 0;  // tasks and handlers
};

class Load {
  public:
    // Shares are of the range, or slice, times the processors selected.
    Load(const Model& model, const Selection& selection);

    // By context: counts of time that it had processors, all added up.
    const std::vector<std::int64_t>& Times() const { return times_; }
    double ShareOf(ContextId context) const;
    // every: at least 1.
    std::vector<LoadSlice> Slices(std::int64_t every) const;
    // The busiest stretch of that length, or of the whole range where that is shorter.
    LoadPeak Peak(std::int64_t window) const;

  private:
    template <class Visit>
    void ForEachRun(Visit visit) const;
    bool IsBusy(ContextId context) const;

    const Model& model_;
    const Selection selection_;
    std::size_t processors_ = 0;
    std::vector<std::int64_t> times_;
};

}  // namespace kvx::timing
