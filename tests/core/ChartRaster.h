#pragma once
// A small raster that paints the chart's bars, lines and marks and knows which event a tip would
// show, and the full walk over the events that the draw lists stand for.

#include <map>

#include "core/CoreFixture.h"
#include "traceview/model/ChartItems.h"

namespace kvx::test {

class ChartRaster {
  public:
    ChartRaster(const ChartGeometry& geometry, bool opaque)
        : g(geometry),
          opaque_(opaque),
          width_(geometry.right + 20),
          pixels_(static_cast<std::size_t>(width_ * Height())),
          tips_(pixels_.size(), -1) {}

    void State(const Bar& bar, int state, bool suspended, bool paused) {
        const int y = g.LineCentre(bar.line);
        const int h = g.lineHeight;
        Fill({bar.x1, y - h / 6, bar.x2, y + h / 6}, 100 + state);
        Tip({bar.x1, y - h / 6, bar.x2, y + h / 6}, bar.event);
        if (suspended) Fill({bar.x1, y - h / 7, bar.x2, y + h / 7}, 200);
        if (paused) Fill({bar.x1, y - h / 8, bar.x2, y + h / 8}, 201);
    }
    void Run(const Bar& bar, bool hatched) {
        const int y = g.LineCentre(bar.line);
        const RECT rect{bar.x1, y - g.lineHeight / 4, bar.x2, y + g.lineHeight / 4};
        Fill(rect, 1, hatched);
        Tip(rect, bar.event);
    }
    // Excludes (x, y2). Dashes stand at the same pixels in every line.
    void Switch(int x, int y1, int y2, bool dashed) {
        for (int y = y1; y != y2; y += y1 < y2 ? 1 : -1) Pattern(x, y, 1, !dashed || y % 24 < 18);
    }
    void Mark(int line, int x, int cls, std::uint32_t event) {
        const int y = g.LineCentre(line);
        const RECT rect{x - g.charWidth / 2, y - g.lineHeight / 3, x + g.charWidth / 2,
                        y + g.lineHeight / 3};
        for (int row = rect.top; row < rect.bottom; ++row) {
            const bool edge = row == rect.top || row + 1 == rect.bottom;
            Fill({rect.left + edge, row, rect.right - edge, row + 1}, edge ? 1 : 300 + cls);
            if (!edge) Fill({rect.left, row, rect.left + 1, row + 1}, 1);
        }
        Tip(rect, event);
    }

    // What a view does with the draw lists.
    void Draw(const ChartItems& items) {
        for (const StateBar& bar : items.states) State(bar, bar.state, bar.suspended, bar.paused);
        for (const SwitchLine& line : items.switches) Switch(line.x, line.y1, line.y2, line.dashed);
        for (const RunBar& bar : items.runs) Run(bar, bar.hatched);
        for (const kvx::Mark& mark : items.marks) Mark(mark.line, mark.x, mark.cls, mark.event);
    }
    // Every event that can be visible, one by one.
    void Walk(Core& core) {
        for (int line = g.firstLine; line <= g.firstLine + g.visibleLines; ++line)
            if (line < g.lineCount) WalkStates(core, line);
        WalkDispatches(core);
        WalkMarks(core);
    }

    friend bool operator==(const ChartRaster& a, const ChartRaster& b) {
        return a.pixels_ == b.pixels_ && a.tips_ == b.tips_;
    }

    const ChartGeometry g;

  private:
    int Height() const {
        return std::max((g.visibleLines + 4) * g.lineHeight, g.clientHeight) + 20;
    }

    template <class Each>
    void ForEachPixel(RECT rect, Each each) {
        for (int y = std::max(rect.top, 0); y < std::min(rect.bottom, Height()); ++y)
            for (int x = std::max(rect.left, 0); x < std::min(rect.right, width_); ++x)
                each(static_cast<std::size_t>(y * width_ + x), x, y);
    }
    void Fill(RECT rect, int colour, bool hatched = false) {
        ForEachPixel(rect, [&](std::size_t, int x, int y) {
            Pattern(x, y, colour, !hatched || (x + y) % 8 == 0 || (x - y) % 8 == 0);
        });
    }
    void Pattern(int x, int y, int colour, bool marked) {
        if (x < 0 || x >= width_ || y < 0 || y >= Height()) return;
        int& pixel = pixels_[static_cast<std::size_t>(y * width_ + x)];
        if (marked)
            pixel = colour;
        else if (opaque_)
            pixel = 0;
    }
    void Tip(RECT rect, std::uint32_t event) {
        ForEachPixel(rect, [&](std::size_t at, int, int) { tips_[at] = event; });
    }

    // False when the interval lies beside the chart column.
    bool Place(Core& core, std::uint32_t e, std::int64_t t, Bar& bar) const {
        std::int64_t end = 0;
        core.service.GetEventEndTime(e, &end);
        bar.event = e;
        bar.x1 = g.X(static_cast<double>(t));
        bar.x2 = g.X(end == 0 ? g.traceEnd : static_cast<double>(end));
        if ((bar.x1 < g.left && bar.x2 < g.left) || (bar.x1 > g.right && bar.x2 > g.right))
            return false;
        bar.x1 = std::clamp(bar.x1, g.left, g.right);
        bar.x2 = std::clamp(bar.x2, g.left, g.right);
        return true;
    }

    void WalkStates(Core& core, int line) {
        ScriptedTraceService& service = core.service;
        std::uint32_t first = 0, last = 0;
        core.data.engine.GetContextEventRange(g.displayStart, line, &first, &last);
        for (std::uint32_t j = first; j <= last; ++j) {
            std::uint32_t e = 0;
            std::int64_t t = 0;
            std::int32_t state = 0;
            VARIANT_BOOL suspended = 0, paused = 0;
            if (Failed(service.GetContextEvent(line, j, &e))) continue;
            service.GetEventTime(e, &t);
            if (static_cast<double>(t) > g.displayEnd) return;
            Bar bar{line};
            if (!Place(core, e, t, bar)) continue;
            service.GetEventState(e, &state);
            service.IsEventSuspended(e, &suspended);
            service.IsEventPaused(e, &paused);
            State(bar, state, suspended == VARIANT_TRUE, paused == VARIANT_TRUE);
        }
    }

    void WalkDispatches(Core& core) {
        bool first = true;
        for (std::uint32_t d = core.data.engine.FindDispatchBefore(g.displayStart);
             d < core.service.Decoded(); ++d) {
            if (core.service.Trace().kind[d] != kEventDispatch) continue;
            const std::int64_t t = core.service.Trace().time[d];
            if (static_cast<double>(t) > g.displayEnd) return;
            std::int32_t from = 0, to = 0;
            core.service.GetEventContext(d, &from);
            core.service.GetEventNextContext(d, &to);
            if (!first) WalkSwitch(core, g.X(static_cast<double>(t)), from, to);
            first = false;
            Bar bar{to};
            if (to < g.firstLine || to > g.firstLine + g.visibleLines) continue;
            if (Place(core, d, t, bar)) Run(bar, core.data.contexts.IsHatched(to) == 1);
        }
    }

    void WalkSwitch(Core& core, int x, int from, int to) {
        const int y1 = g.LineCentre(from);
        const int y2 = g.LineCentre(to);
        if (x < g.left || x > g.right) return;
        if (std::max(y1, y2) < g.lineHeight || std::min(y1, y2) > g.clientHeight) return;
        const auto held = [&](int y) {
            return std::max(g.lineHeight, std::min(y, g.clientHeight));
        };
        Switch(x, held(y1), held(y2), core.data.contexts.IsHatched(from) == 1);
    }

    void WalkMarks(Core& core) {
        for (std::uint32_t s = core.data.engine.FindEventNear(g.displayStart);
             s < core.service.Decoded(); ++s) {
            if (core.service.Trace().kind[s] != kEventSysCall) continue;
            std::uint32_t e = 0;
            std::int64_t t = 0;
            std::int32_t line = 0, cls = 0;
            core.service.GetSysCallEvent(s, &e);
            core.service.GetEventTime(e, &t);
            if (static_cast<double>(t) > g.displayEnd) return;
            core.service.GetEventContext(e, &line);
            const int x = g.X(static_cast<double>(t));
            if (x < g.left || x > g.right) continue;
            if (line < g.firstLine || line > g.firstLine + g.visibleLines) continue;
            core.service.GetSysCallClass(s, &cls);
            Mark(line, x, cls, s);
        }
    }

    const bool opaque_;
    const int width_;
    std::vector<int> pixels_;
    std::vector<std::int64_t> tips_;
};

}  // namespace kvx::test
