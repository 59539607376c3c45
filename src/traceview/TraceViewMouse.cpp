// Mouse: what is under the pointer, tips, and the gestures that a press begins.

#include <array>

#include "framework/ColumnResize.h"
#include "trace/TraceData.h"
#include "traceview/LineDrag.h"
#include "traceview/MarkerDrag.h"
#include "traceview/TraceView.h"

namespace {

constexpr int kGrip = 2;        // pixels on both sides of a marker
constexpr int kNameMargin = 3;  // pixels at the name column's edge that resize it

}  // namespace

// The marker whose line is under the point, below the header row.
std::optional<int> COSTraceView::MarkerAt(CPoint point) const {
    if (!IsOpen() || point.y < lineHeight_) return std::nullopt;
    const ChartGeometry geometry = Geometry();
    constexpr std::array<int, 3> kOrder = {kMarkerIndicator, kMarkerEnd, kMarkerStart};
    for (const int which : kOrder) {
        const double time = data_->markers.GetMarkerTime(which);
        const int x = geometry.X(time);
        if (geometry.InDisplay(time) && x - kGrip < point.x && point.x < x + kGrip) return which;
    }
    return std::nullopt;
}

HCURSOR COSTraceView::CursorAt(CPoint point) const {
    if (point.y < lineHeight_) return columns_.EdgeAt(point.x) ? sizeWE_ : arrow_;
    const bool onLines = IsOpen() && point.y < Geometry().LinesBottom();
    return onLines && MarkerAt(point) ? sizeWE_ : arrow_;
}

void COSTraceView::OnMouseMove(UINT, CPoint point) {
    if (gesture_.IsOn()) {
        gesture_.Move(point);
    } else if (data_) {
        SetCursor(CursorAt(point));
        TrackTip(*this, font_, data_->colors, point.x, point.y);
    }
    Default();
}

std::unique_ptr<IGesture> COSTraceView::GestureAt(CPoint point) {
    if (point.y < lineHeight_) {
        const auto column = columns_.EdgeAt(point.x);
        if (!column) return nullptr;
        const TraceColumns::Column& found = columns_[*column];
        return std::make_unique<CColumnResize>(
            *this, found.right, found.left + TraceColumns::kLeastWidth,
            clientWidth_ - TraceColumns::kLeastWidth, [this, which = *column](int edge) {
                columns_.SetRightEdge(which, edge, charWidth_);
                LayOutColumns();
                SettingsChanged();
            });
    }
    if (!IsOpen()) return nullptr;
    const ChartGeometry geometry = Geometry();
    if (const auto marker = MarkerAt(point)) {
        return std::make_unique<CMarkerDrag>(*this, *this, data_->markers, *marker, geometry);
    }
    const int edge = columns_[TraceColumns::kName].right;
    const int reach = edge < kNameMargin ? edge : edge - kNameMargin;
    const bool onCells = point.y <= geometry.LinesBottom() && point.x <= reach;
    return onCells ? std::make_unique<CLineDrag>(*this, point) : nullptr;
}

void COSTraceView::OnLButtonDown(UINT flags, CPoint point) {
    if (data_ && !gesture_.IsOn()) {
        HideTip();
        gesture_.Begin(GestureAt(point));
    }
    CCoreView::OnLButtonDown(flags, point);
}

void COSTraceView::OnLButtonUp(UINT, CPoint point) {
    gesture_.Release(point);
    Default();
}

void COSTraceView::OnCaptureChanged() {
    gesture_.Cancel();
}
