#include "traceview/TracePointer.h"

#include <array>

#include "framework/ColumnResize.h"
#include "traceview/LineDrag.h"
#include "traceview/MarkerDrag.h"
#include "traceview/TraceView.h"

namespace {

constexpr int kGrip = 2;        // pixels on both sides of a marker
constexpr int kNameMargin = 3;  // pixels at the name column's edge that resize it

}  // namespace

TracePointer::TracePointer(COSTraceView& view)
    : view_(view),
      gesture_(view),
      arrow_(LoadStandardCursor(IDC_ARROW)),
      sizeWE_(LoadStandardCursor(IDC_SIZEWE)) {}

void TracePointer::Move(CPoint point) {
    at_ = point;
    if (gesture_.IsOn()) {
        gesture_.Move(point);
    } else if (view_.Display()) {
        SetCursor(CursorAt(point));
        Hover(point);
    }
}

void TracePointer::Press(CPoint point) {
    if (!view_.Display() || gesture_.IsOn()) return;
    view_.HideTip();
    gesture_.Begin(GestureAt(point), point);
}

// A tip holds the mouse: it is told of a move beyond the window then.
void TracePointer::Leave() {
    if (CWnd::GetCapture() != &view_) at_.reset();
}

void TracePointer::Cancel() {
    at_.reset();
    view_.HideTip();
    gesture_.Cancel();
}

void TracePointer::LookAgain() {
    if (at_ && !gesture_.IsOn()) Hover(*at_);
}

void TracePointer::Hover(CPoint point) {
    if (view_.GetClientRect().PtInRect(point)) return view_.TrackTip(point);
    view_.HideTip();
}

// The marker whose line is under the point, below the header row.
std::optional<int> TracePointer::MarkerAt(CPoint point) const {
    const ChartGeometry geometry = view_.Display()->viewport.Geometry();
    const COSMarker& markers = view_.Display()->data.markers;
    if (!view_.IsOpen() || point.y < geometry.lineHeight) return std::nullopt;
    constexpr std::array<int, 3> kOrder = {kMarkerIndicator, kMarkerEnd, kMarkerStart};
    for (const int which : kOrder) {
        const double time = markers.GetMarkerTime(which);
        const int x = geometry.X(time);
        if (geometry.InDisplay(time) && x - kGrip < point.x && point.x < x + kGrip) return which;
    }
    return std::nullopt;
}

HCURSOR TracePointer::CursorAt(CPoint point) const {
    const ChartGeometry geometry = view_.Display()->viewport.Geometry();
    if (point.y < geometry.lineHeight) return view_.Columns().EdgeAt(point.x) ? sizeWE_ : arrow_;
    return point.y < geometry.LinesBottom() && MarkerAt(point) ? sizeWE_ : arrow_;
}

std::unique_ptr<IGesture> TracePointer::ResizeAt(CPoint point) {
    const auto column = view_.Columns().EdgeAt(point.x);
    if (!column) return nullptr;
    const auto left = [this, which = *column] { return view_.Columns()[which].left; };
    return std::make_unique<CColumnResize>(
        view_, view_.Columns()[*column].right,
        CColumnResize::Column{
            [left] { return left() + TraceColumns::kLeastWidth; },
            [this] { return view_.GetClientRect().Width() - TraceColumns::kLeastWidth; },
            [this, which = *column](int edge) { view_.SetColumnEdge(which, edge); }});
}

std::unique_ptr<IGesture> TracePointer::GestureAt(CPoint point) {
    TraceDisplay& display = *view_.Display();
    const ChartGeometry geometry = display.viewport.Geometry();
    if (point.y < geometry.lineHeight) return ResizeAt(point);
    if (!view_.IsOpen()) return nullptr;
    if (const auto marker = MarkerAt(point)) {
        return std::make_unique<CMarkerDrag>(view_, display, *marker,
                                             [this] { view_.UpdateStatusTexts(); });
    }
    const int edge = view_.Columns()[TraceColumns::kName].right;
    const int reach = edge < kNameMargin ? edge : edge - kNameMargin;
    const bool onCells = point.y <= geometry.LinesBottom() && point.x <= reach;
    return onCells ? std::make_unique<CLineDrag>(view_, display, point) : nullptr;
}
