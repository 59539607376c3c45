#include "traceview/MarkerDrag.h"

#include "platform/ClientDC.h"
#include "platform/Wnd.h"

CMarkerDrag::CMarkerDrag(CWnd& view, IViewSender& sender, COSMarker& markers, int which,
                         const ChartGeometry& geometry)
    : view_(view),
      sender_(sender),
      markers_(markers),
      which_(which),
      geometry_(geometry),
      original_(markers.GetMarkerEvent(which)) {
    markers_.BeginDrag(which_);
    view_.UpdateWindow();
    InvertBar();
}

void CMarkerDrag::InvertBar() {
    const int x = geometry_.X(markers_.GetMarkerTime(which_));
    CClientDC(&view_).InvertRect({x - 1, geometry_.lineHeight, x + 1, geometry_.LinesBottom()});
}

void CMarkerDrag::Move(CPoint point) {
    if (point.x < geometry_.left || point.x == geometry_.X(markers_.GetMarkerTime(which_))) return;
    const auto target = markers_.DragTarget(which_, point.x, geometry_);
    if (!target) return;
    InvertBar();
    markers_.SetMarker(&sender_, which_, *target);
    InvertBar();
}

void CMarkerDrag::Release(CPoint) {
    markers_.Drop(&sender_);
}

void CMarkerDrag::Cancel() {
    markers_.SetMarker(&sender_, which_, original_);
    markers_.EndDrag(&sender_, which_);
}
