#include "traceview/model/ChartViewport.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace {

constexpr std::size_t kMostSteps = 100;

std::optional<ChartViewport::Display> Nearest(const std::vector<ChartViewport::Display>& way,
                                              ChartViewport::Step step) {
    if (way.empty()) return std::nullopt;
    ChartViewport::Display display = way.back();
    display.step = step;
    return display;
}

bool IsZoom(ChartViewport::Step step) {
    return step == ChartViewport::Step::kExpand || step == ChartViewport::Step::kReduce;
}

}  // namespace

void ChartViewport::Open(double traceStart, double traceEnd, double analysedUpTo) {
    Close();
    traceStart_ = traceStart;
    traceEnd_ = traceEnd;
    if (analysedUpTo <= traceStart_) analysedUpTo = traceEnd_;
    if (analysedUpTo <= traceStart_) analysedUpTo = traceEnd_ = traceStart_ + 1.0;
    now_ = {traceStart_, analysedUpTo, TraceSpan() / (analysedUpTo - traceStart_)};
    gridTime = (now_.end - now_.start) / 5.0;
}

void ChartViewport::Close() {
    traceStart_ = traceEnd_ = 0.0;
    now_ = {};
    back_.clear();
    forward_.clear();
    run_.reset();
    firstLine_ = 0;
    dropLine = -1;
}

double ChartViewport::Held(double start) const {
    return std::max(std::min(start, traceEnd_), traceStart_);
}

ChartViewport::Display ChartViewport::Zoomed(double scale, double anchor, Step step) const {
    scale = std::max(1.0, std::min(scale, std::numeric_limits<double>::max()));
    const double start = Held(anchor - (anchor - now_.start) * (now_.scale / scale));
    return {start, start + TraceSpan() / scale, scale, step};
}

ChartViewport::Display ChartViewport::Expanded(double anchor) const {
    return Zoomed(now_.scale * expandRate, anchor, Step::kExpand);
}

ChartViewport::Display ChartViewport::Reduced(double anchor) const {
    return Zoomed(now_.scale / reduceRate, anchor, Step::kReduce);
}

ChartViewport::Display ChartViewport::ScrolledBy(double delta) const {
    const double start = Held(now_.start + delta);
    return {start, start + DisplaySpan(), now_.scale, Step::kScroll};
}

ChartViewport::Display ChartViewport::CentredOn(double time) const {
    Display display = ScrolledBy(time - Middle());
    display.step = Step::kJump;
    return display;
}

std::optional<ChartViewport::Display> ChartViewport::Between(double start, double end) const {
    if (!(start < end)) return std::nullopt;
    return Display{start, end, TraceSpan() / (end - start), Step::kJump};
}

std::optional<ChartViewport::Display> ChartViewport::Previous() const {
    return Nearest(back_, Step::kBack);
}

std::optional<ChartViewport::Display> ChartViewport::Next() const {
    return Nearest(forward_, Step::kForward);
}

void ChartViewport::Show(const Display& display) {
    const Display left = std::exchange(now_, display);
    const bool sameRun = run_ == now_.step;
    const bool stays = left.start == now_.start && left.end == now_.end;
    switch (now_.step) {
        case Step::kBack:
            back_.pop_back();
            forward_.push_back(left);
            break;
        case Step::kForward:
            forward_.pop_back();
            back_.push_back(left);
            break;
        case Step::kScroll:
            break;
        default:
            if (!sameRun && !stays) Remember(left);
            break;
    }
    if (!stays) run_ = IsZoom(now_.step) ? std::optional(now_.step) : std::nullopt;
}

void ChartViewport::Remember(const Display& left) {
    forward_.clear();
    back_.push_back(left);
    if (back_.size() > kMostSteps) back_.erase(back_.begin());
}

int ChartViewport::BarPosition() const {
    const double position = (now_.start - traceStart_) * (kBarEnd + 1.0) / TraceSpan();
    return static_cast<int>(std::min(position, double{kBarEnd}));
}

void ChartViewport::SetCell(int charWidth, int lineHeight) {
    charWidth_ = charWidth;
    lineHeight_ = lineHeight;
}

void ChartViewport::SetChart(int left, int right) {
    left_ = left;
    right_ = right;
}

void ChartViewport::SetHeight(int clientHeight) {
    clientHeight_ = clientHeight;
    if (lineHeight_ == 0) return;
    visibleLines_ = clientHeight / lineHeight_ - 1;
    const int empty = visibleLines_ - (lineCount_ - firstLine_);
    if (IsOpen() && empty > 0) ScrollLines(std::min(empty, firstLine_));
}

int ChartViewport::ScrollLines(int n) {
    const int below = lineCount_ - firstLine_ - visibleLines_;
    n = n < 0 ? std::max(n, -std::max(below, 0)) : std::min(n, firstLine_);
    firstLine_ -= n;
    return n;
}

ChartGeometry ChartViewport::Geometry() const {
    ChartGeometry geometry;
    geometry.left = left_;
    geometry.right = right_;
    geometry.traceStart = traceStart_;
    geometry.traceEnd = traceEnd_;
    geometry.displayStart = now_.start;
    geometry.displayEnd = now_.end;
    geometry.scale = now_.scale;
    geometry.lineHeight = lineHeight_;
    geometry.charWidth = charWidth_;
    geometry.clientHeight = clientHeight_;
    geometry.firstLine = firstLine_;
    geometry.visibleLines = visibleLines_;
    geometry.lineCount = lineCount_;
    return geometry;
}
