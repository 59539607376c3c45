#pragma once
// The gesture that the user of a view is making. The view has the mouse meanwhile, and is painted
// anew when the gesture is over.
//
// A gesture ends with its release. The view cancels it on Esc, when the mouse is taken away, when
// something else comes before the view (a dialog, a menu, another program's window: WM_CANCELMODE),
// and when what the view shows goes.

#include <memory>

#include "framework/Gesture.h"

class CWnd;

class CGestureRun {
  public:
    explicit CGestureRun(CWnd& view) : view_(view) {}

    bool IsOn() const { return gesture_ != nullptr; }
    // Null begins nothing.
    void Begin(std::unique_ptr<IGesture> gesture, CPoint point);
    // Nothing happens without a gesture.
    void Move(CPoint point);
    // As if the mouse had moved: the view shows something else below it.
    void Follow();
    void Draw(CDC& dc);
    void Release(CPoint point);
    void Cancel();

  private:
    void Finish();

    CWnd& view_;
    std::unique_ptr<IGesture> gesture_;
    CPoint last_;  // where the pointer was last
    bool moving_ = false;
};
