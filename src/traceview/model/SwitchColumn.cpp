#include "traceview/model/SwitchColumn.h"

#include "trace/ContextMng.h"

namespace kvx {

namespace {

// The pixels of a line that excludes its last point.
Interval PixelsOf(int y1, int y2) {
    return y1 < y2 ? Interval{y1, y2} : Interval{y2 + 1, y1 + 1};
}

}  // namespace

void SwitchColumn::Begin(int x) {
    x_ = x;
    kept_.clear();
    solid_.Clear();
    any_.Clear();
}

int SwitchColumn::Centre(int line) const {
    return std::max(geometry_.lineHeight,
                    std::min(geometry_.LineCentre(line), geometry_.clientHeight));
}

bool SwitchColumn::IsHatched(int line) const {
    return line >= 0 && line < contexts_.GetCount() && contexts_.IsHatched(line);
}

void SwitchColumn::Add(int from, int to, std::uint32_t event) {
    // Two lines off the same edge of the chart meet here and leave nothing to draw.
    const int y1 = Centre(from);
    const int y2 = Centre(to);
    if (y1 == y2) return;
    const bool dashed = IsHatched(from);
    const Interval pixels = PixelsOf(y1, y2);
    if ((dashed ? any_ : solid_).Contains(pixels)) return;
    kept_.push_back({x_, y1, y2, dashed, event});
    any_.Add(pixels);
    if (!dashed) solid_.Add(pixels);
}

void SwitchColumn::Finish(ChartItems& out) {
    out.insert(out.end(), kept_.rbegin(), kept_.rend());
}

const Interval* SwitchColumn::Settled(int line) const {
    const int y = Centre(line);
    if (const Interval* const around = solid_.Find(y)) return around;
    for (const int beside : {y - 1, y + 1}) {
        const Interval* const interval = solid_.Find(beside);
        if (interval && IsSettledBy(*interval, line)) return interval;
    }
    return nullptr;
}

bool SwitchColumn::IsSettledBy(const Interval& interval, int line) const {
    const int y = Centre(line);
    if (interval.Contains(y)) return true;
    // Lines that leave a hatched context are dashed, and lines that arrive stop before its centre.
    const bool beside = y == interval.high || y == interval.low - 1;
    return beside && IsHatched(line) && any_.Find(y);
}

}  // namespace kvx
