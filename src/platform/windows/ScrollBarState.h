#pragma once
// One scroll bar of a window: what was set, and how it is to be shown.

#include "platform/Backend.h"
#include "platform/windows/ScrollInfo.h"

namespace kvx {

class ScrollBarState {
  public:
    // Takes the members that the mask names. A bar that has nothing to scroll is hidden, or with
    // SIF_DISABLENOSCROLL disabled; one that has is shown.
    void Set(const SCROLLINFO& info);
    void Show(bool show) { shown_ = show; }
    void Enable(bool enable) { enabled_ = enable; }
    const SCROLLINFO& Info() const { return info_; }
    ScrollBarLook Look() const;

  private:
    int LastPosition() const;
    SCROLLINFO info_;
    bool shown_ = false;
    bool enabled_ = true;
};

}  // namespace kvx
