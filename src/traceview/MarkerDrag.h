#pragma once
// The drag of a marker, which always stands on an event: it takes the one nearest to the pointer.
// The analyses follow with the release alone.

#include <functional>

#include "framework/Gesture.h"
#include "traceview/model/TraceDisplay.h"

class CWnd;

class CMarkerDrag : public IGesture {
  public:
    // Begins the drag and draws the bar. moved: the marker stands on another event now.
    CMarkerDrag(CWnd& view, TraceDisplay& display, int which, std::function<void()> moved);
    void Move(CPoint point) override;
    void Release(CPoint point) override;
    void Cancel() override;
    void Draw(CDC& dc) override;
    HCURSOR Cursor() const override { return LoadStandardCursor(IDC_SIZEWE); }

  private:
    RECT Bar() const;
    void Invert(const RECT& bar);

    CWnd& view_;
    TraceDisplay& display_;
    int which_;
    std::function<void()> moved_;
};
