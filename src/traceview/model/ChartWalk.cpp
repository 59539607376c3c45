#include <algorithm>

#include "trace/ContextMng.h"
#include "trace/EventReader.h"
#include "trace/OSTrace.h"
#include "traceview/model/ChartSource.h"
#include "traceview/model/SwitchColumn.h"

namespace kvx {

namespace {

class ChartWalk {
  public:
    ChartWalk(IQOSTraceService& service, const ChartGeometry& geometry, const COSTrace& engine,
              const CContextMng& contexts, ChartItems& items)
        : service_(service),
          events_(service),
          geometry_(geometry),
          engine_(engine),
          contexts_(contexts),
          items_(items) {}

    void States() {
        for (int line = geometry_.firstLine; line <= geometry_.LastDrawnLine(); ++line)
            StatesOf(line);
    }

    void Dispatches() {
        SwitchColumn reduced(geometry_, contexts_);
        std::vector<Switch> column;  // the switches of one pixel column
        int columnX = 0;
        const auto flush = [&] {
            reduced.Begin(columnX);
            for (auto s = column.rbegin(); s != column.rend(); ++s)
                reduced.Add(s->from, s->to, s->event);
            reduced.Finish(items_.switches);
            column.clear();
        };
        bool first = true;
        const std::uint32_t count = events_.Count();
        for (std::uint32_t e = engine_.FindDispatchBefore(geometry_.displayStart); e < count; ++e) {
            if (events_.Kind(e) != kEventDispatch) continue;
            const double t = events_.Time(e);
            if (t > geometry_.displayEnd) break;
            const Switch met{static_cast<int>(events_.Context(e)),
                             static_cast<int>(events_.Next(e)), e};
            const int x = geometry_.X(t);
            if (!first && geometry_.InChart(x)) {
                if (x != columnX) flush();
                columnX = x;
                column.push_back(met);
            }
            first = false;
            Run(met.to, e, t);
        }
        flush();
    }

    void Marks() {
        const std::uint32_t count = events_.Count();
        std::vector<Mark> all;
        for (std::uint32_t s = engine_.FindEventNear(geometry_.displayStart); s < count; ++s) {
            if (events_.Kind(s) != kEventSysCall) continue;
            std::uint32_t placed = s;
            service_.GetSysCallEvent(s, &placed);
            const double t = events_.Time(placed);
            if (t > geometry_.displayEnd) break;
            const int line = static_cast<int>(events_.Context(placed));
            const int x = geometry_.X(t);
            if (!geometry_.InChart(x) || !geometry_.LineDrawn(line)) continue;
            std::int32_t cls = 0;
            service_.GetSysCallClass(s, &cls);
            all.push_back({line, x, cls, s});
        }
        KeepUncovered(all);
    }

  private:
    struct Switch {
        int from;
        int to;
        std::uint32_t event;
    };

    // The columns of an interval; false when it paints none.
    bool Place(std::uint32_t event, double t, int line, Bar& bar) const {
        const double end = events_.EndTime(event);
        const int x1 = geometry_.X(t);
        const int x2 = geometry_.X(end == 0.0 ? geometry_.traceEnd : end);
        bar = {line, std::clamp(x1, geometry_.left, geometry_.right),
               std::clamp(x2, geometry_.left, geometry_.right), event};
        return bar.x1 < bar.x2;
    }

    void StatesOf(int line) {
        std::uint32_t first = 0;
        std::uint32_t last = 0;
        engine_.GetContextEventRange(geometry_.displayStart, line, &first, &last);
        for (std::uint64_t j = first; j <= last; ++j) {
            std::uint32_t e = 0;
            if (Failed(service_.GetContextEvent(line, static_cast<std::uint32_t>(j), &e))) continue;
            const double t = events_.Time(e);
            if (t > geometry_.displayEnd) return;
            StateBar bar;
            if (!Place(e, t, line, bar)) continue;
            VARIANT_BOOL suspended = VARIANT_FALSE;
            VARIANT_BOOL paused = VARIANT_FALSE;
            service_.IsEventSuspended(e, &suspended);
            service_.IsEventPaused(e, &paused);
            bar.state = events_.State(e);
            bar.suspended = suspended == VARIANT_TRUE;
            bar.paused = paused == VARIANT_TRUE;
            items_.states.push_back(bar);
        }
    }

    void Run(int line, std::uint32_t dispatch, double t) {
        RunBar bar;
        if (!geometry_.LineDrawn(line) || !Place(dispatch, t, line, bar)) return;
        bar.hatched = line < contexts_.GetCount() && contexts_.IsHatched(line);
        items_.runs.push_back(bar);
    }

    // Marks of one column and line lie over each other: the last is all that is seen.
    void KeepUncovered(const std::vector<Mark>& all) {
        if (all.empty()) return;
        const auto width = static_cast<std::size_t>(geometry_.right - geometry_.left + 1);
        const auto lines = static_cast<std::size_t>(geometry_.visibleLines + 1);
        std::vector<bool> seen(width * lines);
        for (auto mark = all.rbegin(); mark != all.rend(); ++mark) {
            const auto row = static_cast<std::size_t>(mark->line - geometry_.firstLine);
            const auto at = row * width + static_cast<std::size_t>(mark->x - geometry_.left);
            if (!seen[at]) items_.marks.push_back(*mark);
            seen[at] = true;
        }
        std::reverse(items_.marks.begin(), items_.marks.end());
    }

    IQOSTraceService& service_;
    PlainEvents events_;
    const ChartGeometry& geometry_;
    const COSTrace& engine_;
    const CContextMng& contexts_;
    ChartItems& items_;
};

}  // namespace

void WalkChart(IQOSTraceService& service, const ChartGeometry& geometry, const COSTrace& engine,
               const CContextMng& contexts, ChartItems& items) {
    ChartWalk walk(service, geometry, engine, contexts, items);
    walk.States();
    walk.Dispatches();
    walk.Marks();
}

}  // namespace kvx
