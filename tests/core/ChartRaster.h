#pragma once
// A small raster that paints the chart's bars, lines and marks and knows which event a tip would
// show.

#include <map>
#include <variant>

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

    // What a view does with the items of the trace.
    void Draw(const ChartItems& items) {
        for (const ChartItem& item : items) std::visit(*this, item);
    }
    void operator()(const StateBar& bar) { State(bar, bar.state, bar.suspended, bar.paused); }
    void operator()(const SwitchLine& line) { Switch(line.x, line.y1, line.y2, line.dashed); }
    void operator()(const RunBar& bar) { Run(bar, bar.hatched); }
    void operator()(const kvx::Mark& mark) { Mark(mark.line, mark.x, mark.cls, mark.event); }
    void operator()(const auto&) {}

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

    const bool opaque_;
    const int width_;
    std::vector<int> pixels_;
    std::vector<std::int64_t> tips_;
};

}  // namespace kvx::test
