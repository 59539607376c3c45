#include "traceview/MarkerDrag.h"

#include "platform/drawing/ClientDC.h"
#include "platform/windows/Wnd.h"

CMarkerDrag::CMarkerDrag(CWnd& view, TraceDisplay& display, int which, std::function<void()> moved)
    : view_(view), display_(display), which_(which), moved_(std::move(moved)) {
    display_.data.markers.BeginDrag(which_);
    view_.UpdateWindow();
    Invert(Bar());
}

RECT CMarkerDrag::Bar() const {
    const ChartGeometry geometry = display_.viewport.Geometry();
    const int x = geometry.X(display_.data.markers.GetMarkerTime(which_));
    return {x - 1, geometry.lineHeight, x + 1, geometry.LinesBottom()};
}

void CMarkerDrag::Draw(CDC& dc) {
    dc.InvertRect(Bar());
}

void CMarkerDrag::Invert(const RECT& bar) {
    CClientDC(&view_).InvertRect(bar);
}

void CMarkerDrag::Move(CPoint point) {
    if (point.x < display_.viewport.Geometry().left) return;
    const RECT before = Bar();
    if (!display_.DragMarker(which_, point.x)) return;
    Invert(before);
    Invert(Bar());
    moved_();
}

void CMarkerDrag::Release(CPoint) {
    display_.DropMarkers();
}

void CMarkerDrag::Cancel() {
    display_.CancelMarkerDrag(which_);
    moved_();
}
