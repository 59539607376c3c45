#pragma once
// Dragging the right edge of a table column.

#include <functional>

#include "traceview/Gesture.h"
#include "traceview/TraceColumns.h"

class CWnd;

class CColumnResize : public IGesture {
  public:
    // Draws the bar at the column's edge. The column changes with the release alone; resized is
    // called then, to lay out.
    CColumnResize(CWnd& view, TraceColumns& columns, std::size_t column, int charWidth,
                  std::function<void()> resized);
    void Move(CPoint point) override;
    void Release(CPoint point) override;
    void Cancel() override;
    HCURSOR Cursor() const override { return LoadStandardCursor(IDC_SIZEWE); }

  private:
    void InvertBar();

    CWnd& view_;
    TraceColumns& columns_;
    std::size_t column_;
    int charWidth_;
    std::function<void()> resized_;
    int x_;
};
