#pragma once
// Finds, column by column, the switch lines that leave a mark in the picture. A column with many
// dispatches is not walked through: from some step on the search jumps from the last dispatches
// backwards to the last visit of a line that the lines found so far do not settle.

#include <optional>

#include "traceview/model/EventCursor.h"
#include "traceview/model/PixelColumns.h"
#include "traceview/model/SwitchColumn.h"

namespace kvx {

class SwitchSearch {
  public:
    // Dispatches below event from are left out.
    SwitchSearch(const host::OSTraceColumns& columns, const ChartGeometry& geometry,
                 const CContextMng& contexts, std::uint32_t from);

    // Columns in ascending order.
    void Column(int x, const PixelColumns& pixels, std::vector<SwitchLine>& out);

  private:
    // When a context last became the running one: the dispatch's event + 1, or the event of the
    // column's first dispatch for the context that ran before it; 0: not in the column.
    using Visit = std::uint64_t;

    // A context's dispatches in the column that was asked for last.
    struct Visits {
        EventCursor cursor;
        std::uint32_t column = 0;  // the event of its first dispatch
        std::uint32_t begin = 0;
        std::uint32_t end = 0;
    };

    std::optional<std::uint32_t> Before(std::uint32_t position);
    Visit LastVisit(std::uint32_t context, std::uint32_t before);
    std::uint32_t DispatchAfter(Visit visit) const;
    void Add(std::uint32_t position);
    int Line(std::uint32_t context) const;
    std::uint32_t Event(std::uint32_t position) const {
        return columns_.dispatches.events[position];
    }

    const host::OSTraceColumns& columns_;
    std::uint32_t from_;
    EventCursor dispatches_;
    std::uint32_t first_ = 0;  // positions of the column's dispatches
    std::uint32_t beyond_ = 0;
    std::vector<Visits> visits_;  // by context; empty: the service has no such lists
    SwitchColumn reduced_;
};

}  // namespace kvx
