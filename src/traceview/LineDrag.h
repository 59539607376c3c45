#pragma once
// Dragging a line by its table cells to another place, or, without moving it, clicking it.

#include "framework/Gesture.h"
#include "traceview/model/TraceDisplay.h"

class CWnd;

class CLineDrag : public IGesture {
  public:
    // The view scrolls by its own messages.
    CLineDrag(CWnd& view, TraceDisplay& display, CPoint point);
    void Move(CPoint point) override;
    void Release(CPoint point) override;
    void Cancel() override;
    HCURSOR Cursor() const override;

  private:
    // Line before which a line dropped at the point would land.
    int TargetLine(CPoint point) const;
    void ClickLine(int target);

    CWnd& view_;
    TraceDisplay& display_;
    int source_;
};
