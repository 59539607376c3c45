#pragma once
// Which part of an open trace the chart shows: a stretch of time across the chart column, and the
// lines from the top one down. It also keeps the way back to displays that were left.
//
// With a trace open it holds that
// - the display begins within the trace, and
// - it is as long as the trace divided by the scale, as far as doubles tell.
// Times are counts of the trace clock.

#include <optional>
#include <vector>

#include "traceview/model/ChartGeometry.h"

class ChartViewport {
  public:
    // What leads from one display to another: what the way back counts as one step.
    enum class Step { kScroll, kExpand, kReduce, kJump, kBack, kForward };

    // A display to which an operation leads. Nothing changes before it is shown, and it may be
    // shown once the records up to its end are decoded.
    struct Display {
        double start = 0.0;
        double end = 0.0;
        double scale = 0.0;  // 1: the whole trace
        Step step = Step::kJump;
    };

    bool IsOpen() const { return now_.scale > 0.0; }
    double TraceStart() const { return traceStart_; }
    double TraceEnd() const { return traceEnd_; }
    double TraceSpan() const { return traceEnd_ - traceStart_; }
    double DisplayStart() const { return now_.start; }
    double DisplayEnd() const { return now_.end; }
    double DisplaySpan() const { return TraceSpan() / now_.scale; }
    double Middle() const { return now_.start + (now_.end - now_.start) / 2.0; }
    double Scale() const { return now_.scale; }

    // Shows the trace from its start to the end of what is decoded; a grid line a fifth of that.
    void Open(double traceStart, double traceEnd, double analysedUpTo);
    // To nothing, also the top line and the way back.
    void Close();

    // The time at the anchor keeps its place, unless the display would begin before the trace.
    Display Expanded(double anchor) const;
    // Not beyond the whole trace.
    Display Reduced(double anchor) const;
    // Within the trace.
    Display ScrolledBy(double delta) const;
    Display CentredOn(double time) const;
    // Exactly these times; nothing unless start < end.
    std::optional<Display> Between(double start, double end) const;
    // Where the last zoom or jump came from, and back again; nothing when there was none. Zooms in
    // the same direction, one upon the other, are one step.
    std::optional<Display> Previous() const;
    std::optional<Display> Next() const;
    void Show(const Display& display);

    // The horizontal scroll bar runs from 0 to kBarEnd.
    static constexpr int kBarEnd = 65535;
    int BarPosition() const;

    double gridTime = 0.0;  // distance of grid lines; 0 or less: none
    double expandRate = 1.5;
    double reduceRate = 1.5;
    int dropLine = -1;  // before which a dragged line would land; -1: none is dragged

    // Sizes in pixels. The chart column reaches from left to right.
    void SetCell(int charWidth, int lineHeight);
    void SetChart(int left, int right);
    // Pulls lines in that are hidden above the top one where room would be left below the last.
    void SetHeight(int clientHeight);
    void SetLineCount(int count) { lineCount_ = count; }
    int FirstLine() const { return firstLine_; }
    int VisibleLines() const { return visibleLines_; }
    int PageOfLines() const { return lineHeight_ > 0 ? clientHeight_ / lineHeight_ : 0; }
    // Moves the top line up by n lines, down when negative, as far as there are lines; answers how
    // far it went.
    int ScrollLines(int n);

    // As the picture needs it.
    ChartGeometry Geometry() const;

  private:
    Display Zoomed(double scale, double anchor, Step step) const;
    double Held(double start) const;
    void Remember(const Display& left);

    double traceStart_ = 0.0;
    double traceEnd_ = 0.0;
    Display now_;
    std::vector<Display> back_;     // the last one is the nearest
    std::vector<Display> forward_;  // likewise
    std::optional<Step> run_;       // the direction of the zooms that are one step so far

    int left_ = 0;
    int right_ = 0;
    int charWidth_ = 0;
    int lineHeight_ = 0;
    int clientHeight_ = 0;
    int firstLine_ = 0;
    int visibleLines_ = 0;
    int lineCount_ = 0;
};
