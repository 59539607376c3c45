#pragma once
// Finds, column by column, the switch lines that leave a mark in the picture. A column with many
// dispatches is not walked: from the last dispatch backwards, the search jumps to the last visit of
// a line that the lines found so far do not settle.

#include "traceview/model/EventCursor.h"
#include "traceview/model/PixelColumns.h"
#include "traceview/model/SwitchColumn.h"

namespace kvx {

class SwitchSearch {
  public:
    SwitchSearch(const host::OSTraceColumns& columns, const ChartGeometry& geometry,
                 const CContextMng& contexts);

    // Columns in ascending order; dispatches below the event are left out.
    void Column(int x, const PixelColumns& pixels, std::uint32_t from,
                std::vector<SwitchLine>& out);

  private:
    // When a context last became the running one: the dispatch's event + 1, or the first dispatch
    // of the column for the context that ran before it; kNever.
    static constexpr std::uint64_t kNever = 0;
    struct Visits {
        EventCursor cursor;
        std::uint32_t begin = 0;  // the context's dispatches in the column
        std::uint32_t end = 0;
    };

    void Walk(std::uint32_t first, std::uint32_t last);
    void Jump(std::uint32_t first, std::uint32_t last);
    void FindVisits(std::uint32_t first, std::uint32_t last);
    std::uint64_t LastVisit(std::uint32_t context, std::uint32_t before);
    std::uint32_t DispatchAfter(std::uint64_t visit, std::uint32_t first) const;
    void Add(std::uint32_t position);
    int Line(std::uint32_t context) const;
    std::uint32_t Event(std::uint32_t position) const {
        return columns_.dispatches.events[position];
    }

    const host::OSTraceColumns& columns_;
    EventCursor dispatches_;
    std::vector<Visits> visits_;  // by context
    std::uint32_t initial_ = 0;   // the context that ran before the column
    std::uint64_t initialVisit_ = kNever;
    SwitchColumn reduced_;
};

}  // namespace kvx
