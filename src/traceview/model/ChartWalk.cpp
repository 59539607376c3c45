#include <algorithm>

#include "trace/ContextMng.h"
#include "trace/EventReader.h"
#include "trace/OSTrace.h"
#include "traceview/model/ChartSource.h"

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
        bool first = true;
        const std::uint32_t count = events_.Count();
        for (std::uint32_t e = engine_.FindDispatchBefore(geometry_.displayStart); e < count; ++e) {
            if (events_.Kind(e) != kEventDispatch) continue;
            const double t = events_.Time(e);
            if (t > geometry_.displayEnd) return;
            const auto from = static_cast<int>(events_.Context(e));
            const auto to = static_cast<int>(events_.Next(e));
            if (!first) Switch(geometry_.X(t), from, to, e);
            first = false;
            Run(to, e, t);
        }
    }

    void Marks() {
        const std::uint32_t count = events_.Count();
        for (std::uint32_t s = engine_.FindEventNear(geometry_.displayStart); s < count; ++s) {
            if (events_.Kind(s) != kEventSysCall) continue;
            std::uint32_t placed = s;
            service_.GetSysCallEvent(s, &placed);
            const double t = events_.Time(placed);
            if (t > geometry_.displayEnd) return;
            const int line = static_cast<int>(events_.Context(placed));
            const int x = geometry_.X(t);
            if (!geometry_.InChart(x) || !geometry_.LineDrawn(line)) continue;
            std::int32_t cls = 0;
            service_.GetSysCallClass(s, &cls);
            items_.emplace_back(Mark{line, x, cls, s});
        }
    }

  private:
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
            items_.emplace_back(bar);
        }
    }

    bool IsHatched(int line) const {
        return line < contexts_.GetCount() && contexts_.IsHatched(line);
    }

    void Switch(int x, int from, int to, std::uint32_t event) {
        const int top = geometry_.lineHeight;
        const int bottom = geometry_.clientHeight;
        const int y1 = geometry_.LineCentre(from);
        const int y2 = geometry_.LineCentre(to);
        if (!geometry_.InChart(x) || (y1 < top && y2 < top) || (y1 > bottom && y2 > bottom)) return;
        const auto held = [&](int y) { return std::max(top, std::min(y, bottom)); };
        items_.emplace_back(SwitchLine{x, held(y1), held(y2), IsHatched(from), event});
    }

    void Run(int line, std::uint32_t dispatch, double t) {
        RunBar bar;
        if (!geometry_.LineDrawn(line) || !Place(dispatch, t, line, bar)) return;
        bar.hatched = IsHatched(line);
        items_.emplace_back(bar);
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
