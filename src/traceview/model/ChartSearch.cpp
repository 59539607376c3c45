#include <algorithm>

#include "trace/ContextMng.h"
#include "trace/EventReader.h"
#include "trace/OSTrace.h"
#include "traceview/model/ChartSource.h"
#include "traceview/model/ListSearch.h"
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
            const auto begun =
                CountsBefore(columns_.stateEvents, columns_.stateLevels, context, pixels_.Bounds());
            for (Bar& bar : Bars(columns_.stateEvents[context], begun, first)) {
                bar.line = line;
                const unsigned flags = columns_.flags[bar.event];
                items_.emplace_back(StateBar{bar, events_.State(bar.event),
                                             (flags & host::kFlagSuspended) != 0,
                                             (flags & host::kFlagPaused) != 0});
            }
        }
    }

    void Dispatches() {
        const std::uint32_t from = engine_.FindDispatchBefore(geometry_.displayStart);
        const host::EventList& all = columns_.dispatches;
        const auto first = static_cast<std::uint32_t>(
            std::lower_bound(all.events, all.events + all.count, from) - all.events);
        const auto begun = CountsBefore(all, {}, pixels_.Bounds());
        if (first < all.count) Switches(begun, first + 1);
        for (Bar& bar : Bars(all, begun, first)) {
            bar.line = static_cast<int>(events_.Next(bar.event));
            if (!geometry_.LineDrawn(bar.line)) continue;
            const bool known = bar.line < contexts_.GetCount();
            items_.emplace_back(RunBar{bar, known && contexts_.IsHatched(bar.line)});
        }
    }

    void Marks() {
        const std::uint32_t from = engine_.FindEventNear(geometry_.displayStart);
        const auto issued = CallsOfDrawnLines();
        for (int x = geometry_.left; x <= geometry_.right; ++x) {
            const std::uint32_t first = std::max(pixels_.First(x), from);
            const std::uint32_t beyond = pixels_.Beyond(x);
            if (first >= beyond) continue;
            const auto before = static_cast<std::ptrdiff_t>(marks_.size());
            if (columns_.sysCallsOf)
                SearchCalls(issued, x, first);
            else
                WalkCalls(x, first, beyond);
            std::sort(marks_.begin() + before, marks_.end(),
                      [](const Mark& a, const Mark& b) { return a.event < b.event; });
        }
        for (Mark& mark : marks_) {
            mark.cls = columns_.code[mark.event];
            items_.emplace_back(mark);
        }
    }

  private:
    std::uint32_t ContextOf(int line) const {
        const auto at = static_cast<std::uint32_t>(line);
        return at < contextOfLine_.size() ? contextOfLine_[at] : kNoContext;
    }

    // The column at which an event's interval ends, seen from a column that it reaches.
    int EndColumn(std::uint32_t event, int from) const {
        const std::uint32_t last = host::EndOf(columns_.endEvent, event);
        if (last < pixels_.Beyond(geometry_.right)) return pixels_.ColumnOf(last, from);
        const double end = events_.EndTime(event);
        return std::min(geometry_.X(end == 0.0 ? geometry_.traceEnd : end), geometry_.right);
    }

    // The intervals from position first on that paint a column, in order; begun: CountsBefore of
    // the pixels' bounds. Intervals do not overlap, so a column belongs to the last one that begins
    // at or before it, or to none; and one that began at a column further left has been found
    // there.
    std::vector<Bar> Bars(const host::EventList& list, const std::vector<std::uint32_t>& begun,
                          std::uint32_t first) const {
        std::vector<Bar> bars;
        FetchEnds(list, begun);
        for (int x = geometry_.left; x < geometry_.right; ++x) {
            const std::uint32_t count = begun[static_cast<std::size_t>(x - geometry_.left) + 1];
            if (count <= first) continue;
            const std::uint32_t event = list.events[count - 1];
            const bool begins = event >= pixels_.First(x) || x == geometry_.left;
            const bool ends = host::EndOf(columns_.endEvent, event) < pixels_.Beyond(x);
            if (!begins || ends) continue;
            const int end = EndColumn(event, x);
            if (end <= x) continue;
            __builtin_prefetch(columns_.code + event);
            __builtin_prefetch(columns_.flags + event);
            bars.push_back({0, x, end, event});
            x = end - 1;
        }
        return bars;
    }

    // Where intervals end lies all over the memory.
    void FetchEnds(const host::EventList& list, const std::vector<std::uint32_t>& begun) const {
        for (const std::uint32_t count : begun)
            if (count) __builtin_prefetch(columns_.endEvent + list.events[count - 1]);
    }

    // begun: of the dispatches, of which those from position first on are drawn.
    void Switches(const std::vector<std::uint32_t>& begun, std::uint32_t first) {
        SwitchSearch search(columns_, geometry_, contexts_, pixels_);
        for (int x = geometry_.left; x <= geometry_.right; ++x) {
            const auto at = static_cast<std::size_t>(x - geometry_.left);
            search.Column(x, std::max(begun[at], first), begun[at + 1], items_);
        }
    }

    // The calls of a visible row that lie before each bound of the pixels.
    struct RowCalls {
        int line;
        const std::uint32_t* events;
        std::vector<std::uint32_t> counts;
    };
    std::vector<RowCalls> CallsOfDrawnLines() const {
        std::vector<RowCalls> calls;
        for (int row = 0; columns_.sysCallsOf && row <= geometry_.visibleLines; ++row) {
            const int line = geometry_.firstLine + row;
            const std::uint32_t context = ContextOf(line);
            if (context == kNoContext) continue;
            calls.push_back({line, columns_.sysCallsOf[context].events,
                             CountsBefore(columns_.sysCallsOf, columns_.sysCallsOfLevels, context,
                                          pixels_.Bounds())});
        }
        return calls;
    }

    // Its class is fetched ahead, and set when all marks are known.
    void AddMark(int line, int x, std::uint32_t event) {
        __builtin_prefetch(columns_.code + event);
        marks_.push_back({line, x, 0, event});
    }

    void SearchCalls(const std::vector<RowCalls>& issued, int x, std::uint32_t first) {
        const auto column = static_cast<std::size_t>(x - geometry_.left);
        for (const RowCalls& row : issued) {
            const std::uint32_t count = row.counts[column + 1];
            if (count > row.counts[column] && row.events[count - 1] >= first)
                AddMark(row.line, x, row.events[count - 1]);
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
    std::vector<Mark> marks_;
    PixelColumns pixels_;
    std::vector<std::uint32_t> contextOfLine_;
};

}  // namespace

void SearchChart(const host::OSTraceColumns& columns, const ChartGeometry& geometry,
                 const COSTrace& engine, const CContextMng& contexts, ChartItems& items) {
    ChartSearch search(columns, geometry, engine, contexts, items);
    search.States();
    search.Dispatches();
    search.Marks();
}

}  // namespace kvx
