#pragma once
// Dragging the right edge of a table column.

#include <functional>

#include "framework/Gesture.h"

class CWnd;

class CColumnResize : public IGesture {
  public:
    // Of a column that the view may scroll; all in its client coordinates.
    struct Column {
        std::function<int()> least;          // where the edge may go
        std::function<int()> most;           //
        std::function<void(int x)> setEdge;  // with the release alone
    };
    // Draws the bar at x.
    CColumnResize(CWnd& view, int x, Column column);
    void Move(CPoint point) override;
    void Release(CPoint point) override;
    void Cancel() override;
    void Draw(CDC& dc) override;
    HCURSOR Cursor() const override { return LoadStandardCursor(IDC_SIZEWE); }

  private:
    void InvertBar();

    CWnd& view_;
    int x_;
    Column column_;
};
