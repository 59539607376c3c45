// Mouse: what is under the pointer, tips, and the gestures that a press begins.

#include <array>

#include "trace/TraceData.h"
#include "traceview/ColumnResize.h"
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
    if (gesture_) {
        gesture_->Move(point);
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
        return std::make_unique<CColumnResize>(*this, columns_, *column, charWidth_, [this] {
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
    if (data_ && !gesture_) {
        HideTip();
        if (auto gesture = GestureAt(point)) BeginGesture(std::move(gesture));
    }
    CCoreView::OnLButtonDown(flags, point);
}

void COSTraceView::BeginGesture(std::unique_ptr<IGesture> gesture) {
    SetCapture();
    gesture_ = std::move(gesture);
    if (const HCURSOR cursor = gesture_->Cursor()) SetCursor(cursor);
}

void COSTraceView::OnLButtonUp(UINT, CPoint point) {
    if (gesture_) {
        gesture_->Release(point);
        EndGesture();
    }
    Default();
}

// The gesture goes before the capture: who loses the capture cancels.
void COSTraceView::EndGesture() {
    gesture_.reset();
    ReleaseCapture();
    SetCursor(arrow_);
    Invalidate(true);
}

void COSTraceView::CancelGesture() {
    if (!gesture_) return;
    gesture_->Cancel();
    EndGesture();
}

void COSTraceView::OnCaptureChanged() { CancelGesture(); }
