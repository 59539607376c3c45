#pragma once
// Tips: what the trace service says about the chart element under the pointer.

#include <memory>
#include <vector>

#include "display/model/Color.h"
#include "platform/base/Types.h"
#include "platform/drawing/Font.h"

class CTipWindow;
class CWnd;

// Where an element was drawn, in pixels of the view; right and bottom lie outside it.
struct CTipRect {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;
    std::uint32_t event = 0;
};

class COSTip {
  public:
    COSTip();
    virtual ~COSTip();

    void AddTipRect(const RECT& rect, std::uint32_t event);
    void ClearTipRects() { rects_.clear(); }
    // Those that lie in the part, which was painted over.
    void RemoveTipRects(const RECT& part);
    // 1 and the event of the rectangle drawn last under the point.
    int HitTest(int x, int y, std::uint32_t* event) const;
    // Shows, moves or hides the tip for the pointer at (x, y) of the view.
    void TrackTip(CWnd& view, CFont* font, const COSColor& colors, int x, int y);
    void HideTip();
    bool IsTipShown() const { return window_ != nullptr; }

  private:
    std::unique_ptr<CTipWindow> window_;
    CWnd* view_ = nullptr;         // that has the mouse while there is a window
    std::vector<CTipRect> rects_;  // in drawing order
};
