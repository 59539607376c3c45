#pragma once
// Dragging a line by its table cells to another place, or, without moving it, clicking it.

#include "framework/Gesture.h"

class COSTraceView;

class CLineDrag : public IGesture {
  public:
    CLineDrag(COSTraceView& view, CPoint point);
    void Move(CPoint point) override;
    void Release(CPoint point) override;
    void Cancel() override;
    HCURSOR Cursor() const override;

  private:
    // Line before which a line dropped at the point would land.
    int TargetLine(CPoint point) const;
    void MoveLine(int target);
    void ClickLine(int target);

    COSTraceView& view_;
    int source_;
};
