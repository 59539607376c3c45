#pragma once
// What the chart shows of the trace, kept from one paint to the next: a paint after a marker or
// anything else that lies over the trace was moved has nothing to look for.

#include <cstdint>
#include <vector>

#include "host/OSTraceColumns.h"
#include "traceview/model/ChartItems.h"

namespace kvx {

class KeptItems {
  public:
    // What SearchChart gives. Looked for anew when the chart, the events, or the lines have
    // changed.
    const ChartItems& Of(const host::OSTraceColumns& columns, const ChartGeometry& geometry,
                         const COSTrace& engine, const CContextMng& contexts);
    // To be called when the trace is another one.
    void Forget() { found_ = {}; }

  private:
    struct Seen {
        ChartGeometry geometry;
        const std::int64_t* time = nullptr;  // the columns are told by it
        std::uint32_t events = 0;
        std::uint32_t knownEvents = 0;  // the ends of intervals follow them
        std::vector<std::uint32_t> lineOfContext;
        std::vector<bool> hatched;  // by line
        friend bool operator==(const Seen&, const Seen&) = default;
    };
    struct Found {
        Seen of;
        ChartItems items;
    };

    Found found_;
};

}  // namespace kvx
