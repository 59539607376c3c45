#pragma once
// The switch lines of one pixel column, reduced to those that leave a mark in the picture.
//
// Lines are given from the last to the first. One whose every pixel is painted over by later ones
// is left out: a solid line paints over anything, a dashed one over dashed ones, for dashes stand
// at the same pixels in every line. The gaps of dashes may show what is below or not: either way
// the picture is that of all lines drawn in order.

#include <vector>

#include "traceview/model/ChartItems.h"
#include "traceview/model/Coverage.h"

class CContextMng;

namespace kvx {

class SwitchColumn {
  public:
    SwitchColumn(const ChartGeometry& geometry, const CContextMng& contexts)
        : geometry_(geometry), contexts_(contexts) {}

    void Begin(int x);
    // A switch between two lines, earlier than those added before.
    void Add(int from, int to, std::uint32_t event);
    // Appends what is left of the column, in the order of time.
    void Finish(ChartItems& out);

    // The pixels, all covered, around the line's centre; null when its centre is not covered.
    // Until the next Add.
    const Interval* Settled(int line) const;
    // Every switch between this line and another that the interval settles is painted over.
    bool IsSettledBy(const Interval& interval, int line) const;

  private:
    int Centre(int line) const;
    bool IsHatched(int line) const;

    const ChartGeometry& geometry_;
    const CContextMng& contexts_;
    int x_ = 0;
    std::vector<SwitchLine> kept_;
    Coverage solid_;  // by solid lines
    Coverage any_;    // by lines of either kind
};

}  // namespace kvx
