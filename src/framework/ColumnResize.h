#pragma once
// Dragging the right edge of a table column.

#include <functional>

#include "framework/Gesture.h"

class CWnd;

class CColumnResize : public IGesture {
  public:
    // Draws the bar at x, which is then held between least and most. All are client coordinates of
    // the view. The column changes with the release alone: resized gets the edge then.
    CColumnResize(CWnd& view, int x, int least, int most, std::function<void(int x)> resized);
    void Move(CPoint point) override;
    void Release(CPoint point) override;
    void Cancel() override;
    HCURSOR Cursor() const override { return LoadStandardCursor(IDC_SIZEWE); }

  private:
    void InvertBar();

    CWnd& view_;
    int x_;
    int least_;
    int most_;
    std::function<void(int)> resized_;
};
