#pragma once
// The mouse over the OS Trace window: one gesture at a time, and without one the tip of what lies
// under the pointer. Both are looked up in what is shown now, and looked at again after each paint.

#include <memory>
#include <optional>

#include "framework/GestureRun.h"

class COSTraceView;

class TracePointer {
  public:
    explicit TracePointer(COSTraceView& view);

    bool IsDragging() const { return gesture_.IsOn(); }
    void Move(CPoint point);
    void Press(CPoint point);
    void Release(CPoint point) { gesture_.Release(point); }
    // The mouse is elsewhere.
    void Leave();
    // Something else comes before the window, or what it shows goes: no gesture, no tip, until the
    // mouse moves again.
    void Cancel();
    // No gesture; the pointer stays where it is.
    void CancelGesture() { gesture_.Cancel(); }
    // The display has moved under the pointer.
    void Follow() { gesture_.Follow(); }
    // At the end of a paint.
    void Draw(CDC& dc) { gesture_.Draw(dc); }
    // After a paint, once nothing is being painted.
    void LookAgain();

  private:
    std::optional<int> MarkerAt(CPoint point) const;
    HCURSOR CursorAt(CPoint point) const;
    std::unique_ptr<IGesture> GestureAt(CPoint point);
    std::unique_ptr<IGesture> ResizeAt(CPoint point);
    void Hover(CPoint point);

    COSTraceView& view_;
    CGestureRun gesture_;
    std::optional<CPoint> at_;  // nothing: not over the window
    HCURSOR arrow_;
    HCURSOR sizeWE_;
};
