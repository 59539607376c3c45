#pragma once
// The gesture that the user of a view is making. The view has the mouse meanwhile, and is painted
// anew when the gesture is over.

#include <memory>

#include "framework/Gesture.h"

class CWnd;

class CGestureRun {
  public:
    explicit CGestureRun(CWnd& view) : view_(view) {}

    bool IsOn() const { return gesture_ != nullptr; }
    // Null begins nothing.
    void Begin(std::unique_ptr<IGesture> gesture);
    // Nothing happens without a gesture.
    void Move(CPoint point);
    void Release(CPoint point);
    // By the user, or because the view has lost the mouse.
    void Cancel();

  private:
    void Finish();

    CWnd& view_;
    std::unique_ptr<IGesture> gesture_;
};
