#pragma once
// Finds, column by column, the switch lines that leave a mark in the picture. A column with many
// dispatches is not walked through: from some step on the search jumps from the last dispatches
// backwards to the last visit of a line that the lines found so far do not settle.

#include <optional>

#include "traceview/model/PixelColumns.h"
#include "traceview/model/SwitchColumn.h"

namespace kvx {

class SwitchSearch {
  public:
    SwitchSearch(const host::OSTraceColumns& columns, const ChartGeometry& geometry,
                 const CContextMng& contexts, const PixelColumns& pixels)
        : columns_(columns), pixels_(pixels), left_(geometry.left), reduced_(geometry, contexts) {}

    // Of the column's dispatches at positions first to beyond - 1 of the list of all.
    void Column(int x, std::uint32_t first, std::uint32_t beyond, ChartItems& out);

  private:
    // When a context last became the running one: the dispatch's event + 1, or the event of the
    // column's first dispatch for the context that ran before it; 0: not in the column.
    using Visit = std::uint64_t;

    std::optional<std::uint32_t> Before(std::uint32_t position);
    Visit LastVisit(std::uint32_t context, std::uint32_t before);
    std::uint32_t DispatchAfter(Visit visit) const;
    const std::vector<std::uint32_t>& CountsOf(std::uint32_t context);
    void Add(std::uint32_t position);
    int Line(std::uint32_t context) const;
    std::uint32_t Event(std::uint32_t position) const {
        return columns_.dispatches.events[position];
    }

    const host::OSTraceColumns& columns_;
    const PixelColumns& pixels_;
    int left_;
    std::size_t column_ = 0;
    std::uint32_t first_ = 0;  // positions of the column's dispatches
    std::uint32_t beyond_ = 0;
    // By context: how many of the dispatches to it lie before each bound of the pixels; looked for
    // when they are first needed.
    std::vector<std::vector<std::uint32_t>> counts_;
    SwitchColumn reduced_;
};

}  // namespace kvx
