#include <algorithm>

#include "trace/ContextMng.h"
#include "trace/EventReader.h"
#include "trace/OSTrace.h"
#include "traceview/model/ChartSource.h"
#include "traceview/model/SwitchSearch.h"

namespace kvx {

namespace {

constexpr std::uint32_t kNoContext = 0xFFFFFFFFu;

class ChartSearch {
  public:
    ChartSearch(const host::OSTraceColumns& columns, const ChartGeometry& geometry,
                const COSTrace& engine, const CContextMng& contexts, ChartItems& items)
        : columns_(columns),
          events_(columns),
          geometry_(geometry),
          engine_(engine),
          contexts_(contexts),
          items_(items),
          pixels_(columns, geometry),
          contextOfLine_(columns.contextCount, kNoContext) {
        for (std::uint32_t c = 0; c < columns.contextCount; ++c) {
            const std::uint32_t line = columns.lineOfContext[c];
            if (line < columns.contextCount) contextOfLine_[line] = c;
        }
    }

    void States() {
        for (int line = geometry_.firstLine; line <= geometry_.LastDrawnLine(); ++line) {
            const std::uint32_t context = ContextOf(line);
            if (context == kNoContext) continue;
            std::uint32_t first = 0;
            std::uint32_t last = 0;
            engine_.GetContextEventRange(geometry_.displayStart, line, &first, &last);
            for (Bar& bar : Bars(columns_.stateEvents[context], first)) {
                bar.line = line;
                const unsigned flags = columns_.flags[bar.event];
                items_.states.push_back({bar, events_.State(bar.event),
                                         (flags & host::kFlagSuspended) != 0,
                                         (flags & host::kFlagPaused) != 0});
            }
        }
    }

    void Runs() {
        const std::uint32_t from = engine_.FindDispatchBefore(geometry_.displayStart);
        const std::uint32_t first = EventCursor(columns_.dispatches).AdvanceTo(from);
        for (Bar& bar : Bars(columns_.dispatches, first)) {
            bar.line = static_cast<int>(events_.Next(bar.event));
            if (!geometry_.LineDrawn(bar.line)) continue;
            const bool known = bar.line < contexts_.GetCount();
            items_.runs.push_back({bar, known && contexts_.IsHatched(bar.line)});
        }
        if (first < columns_.dispatches.count) Switches(columns_.dispatches.events[first] + 1);
    }

    void Marks() {
        const std::uint32_t from = engine_.FindEventNear(geometry_.displayStart);
        std::vector<EventCursor> calls = CallsOfDrawnLines();
        for (int x = geometry_.left; x <= geometry_.right; ++x) {
            const std::uint32_t first = std::max(pixels_.First(x), from);
            const std::uint32_t beyond = pixels_.Beyond(x);
            if (first >= beyond) continue;
            const std::size_t before = items_.marks.size();
            if (columns_.sysCallsOf)
                SearchCalls(calls, x, first, beyond);
            else
                WalkCalls(x, first, beyond);
            std::sort(items_.marks.begin() + static_cast<std::ptrdiff_t>(before),
                      items_.marks.end(),
                      [](const Mark& a, const Mark& b) { return a.event < b.event; });
        }
    }

  private:
    std::uint32_t ContextOf(int line) const {
        const auto at = static_cast<std::uint32_t>(line);
        return at < contextOfLine_.size() ? contextOfLine_[at] : kNoContext;
    }

    // The interval of an event, as columns of the chart.
    Bar Place(std::uint32_t event) const {
        const double end = events_.EndTime(event);
        const int x1 = geometry_.X(events_.Time(event));
        const int x2 = geometry_.X(end == 0.0 ? geometry_.traceEnd : end);
        return {0, std::clamp(x1, geometry_.left, geometry_.right),
                std::clamp(x2, geometry_.left, geometry_.right), event};
    }

    // An interval that ends at time 0 counts as open, although others follow it.
    bool IsOverlapping(std::uint32_t event) const {
        return columns_.endEvent[event] < columns_.eventCount && events_.EndTime(event) == 0.0;
    }

    // The intervals from position first on that paint a column, in order. Intervals do not overlap,
    // so a column belongs to the last one that begins at or before it, or to none.
    std::vector<Bar> Bars(const host::EventList& list, std::uint32_t first) const {
        std::vector<Bar> bars = OverlappingBars(list, first);
        const bool sorted = bars.empty();
        EventCursor cursor(list);
        for (int x = geometry_.left; x < geometry_.right; ++x) {
            const std::uint32_t count = cursor.AdvanceTo(pixels_.Beyond(x));
            if (count <= first || IsOverlapping(list.events[count - 1])) continue;
            const Bar bar = Place(list.events[count - 1]);
            if (bar.x2 <= x) continue;
            bars.push_back(bar);
            x = bar.x2 - 1;
        }
        const auto byEvent = [](const Bar& a, const Bar& b) { return a.event < b.event; };
        if (!sorted) std::sort(bars.begin(), bars.end(), byEvent);
        return bars;
    }

    std::vector<Bar> OverlappingBars(const host::EventList& list, std::uint32_t first) const {
        std::vector<Bar> bars;
        const std::uint32_t last = pixels_.Beyond(geometry_.right);
        const auto before = [&](std::uint32_t e) { return events_.Time(e) < 0.0; };
        const std::uint32_t* const end = list.events + list.count;
        auto at = std::partition_point(list.events, end, before);
        // The one that begins before time 0 and ends there.
        if (at != list.events) --at;
        at = std::max(at, list.events + std::min(first, list.count));
        for (; at != end && *at < last && events_.Time(*at) <= 0.0; ++at) {
            const Bar bar = Place(*at);
            if (IsOverlapping(*at) && bar.x1 < bar.x2) bars.push_back(bar);
        }
        return bars;
    }

    void Switches(std::uint32_t from) {
        SwitchSearch search(columns_, geometry_, contexts_);
        for (int x = geometry_.left; x <= geometry_.right; ++x)
            search.Column(x, pixels_, from, items_.switches);
    }

    // By visible row.
    std::vector<EventCursor> CallsOfDrawnLines() const {
        std::vector<EventCursor> calls;
        for (int row = 0; columns_.sysCallsOf && row <= geometry_.visibleLines; ++row) {
            const std::uint32_t context = ContextOf(geometry_.firstLine + row);
            calls.emplace_back(context == kNoContext ? host::EventList{}
                                                     : columns_.sysCallsOf[context]);
        }
        return calls;
    }

    void AddMark(int line, int x, std::uint32_t event) {
        items_.marks.push_back({line, x, columns_.code[event], event});
    }

    void SearchCalls(std::vector<EventCursor>& calls, int x, std::uint32_t first,
                     std::uint32_t beyond) {
        int line = geometry_.firstLine;
        for (EventCursor& call : calls) {
            const std::uint32_t count = call.AdvanceTo(beyond);
            if (count && call.List().events[count - 1] >= first)
                AddMark(line, x, call.List().events[count - 1]);
            ++line;
        }
    }

    void WalkCalls(int x, std::uint32_t first, std::uint32_t beyond) {
        std::vector<bool> seen(static_cast<std::size_t>(std::max(geometry_.visibleLines + 1, 0)));
        const std::uint32_t* const begin = columns_.sysCalls.events;
        auto call = std::lower_bound(begin, begin + columns_.sysCalls.count, beyond);
        while (call != begin && *--call >= first) {
            const int line = static_cast<int>(events_.Context(*call));
            if (!geometry_.LineDrawn(line)) continue;
            const auto row = static_cast<std::size_t>(line - geometry_.firstLine);
            if (!seen[row]) AddMark(line, x, *call);
            seen[row] = true;
        }
    }

    const host::OSTraceColumns& columns_;
    ColumnEvents events_;
    const ChartGeometry& geometry_;
    const COSTrace& engine_;
    const CContextMng& contexts_;
    ChartItems& items_;
    PixelColumns pixels_;
    std::vector<std::uint32_t> contextOfLine_;
};

}  // namespace

void SearchChart(const host::OSTraceColumns& columns, const ChartGeometry& geometry,
                 const COSTrace& engine, const CContextMng& contexts, ChartItems& items) {
    ChartSearch search(columns, geometry, engine, contexts, items);
    search.States();
    search.Runs();
    search.Marks();
}

}  // namespace kvx
