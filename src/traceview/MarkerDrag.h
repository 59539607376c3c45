#pragma once
// Dragging a marker: it jumps from event to event under the pointer; the analyses follow with the
// release alone.

#include "framework/Gesture.h"
#include "traceview/model/ChartGeometry.h"
#include "traceview/model/Marker.h"

class CWnd;

class CMarkerDrag : public IGesture {
  public:
    // Begins the drag and draws the bar. The chart does not scroll meanwhile.
    CMarkerDrag(CWnd& view, IViewSender& sender, COSMarker& markers, int which,
                const ChartGeometry& geometry);
    void Move(CPoint point) override;
    void Release(CPoint point) override;
    void Cancel() override;
    HCURSOR Cursor() const override { return LoadStandardCursor(IDC_SIZEWE); }

  private:
    void InvertBar();

    CWnd& view_;
    IViewSender& sender_;
    COSMarker& markers_;
    int which_;
    ChartGeometry geometry_;
    std::uint32_t original_;  // event where the marker stood
};
