#pragma once
// The monitors: each has its own pixels a logical pixel. In logical pixels a monitor begins where
// it begins in device pixels.

#include "platform/win32/System.h"

namespace kvx::win32 {

class Monitor {
  public:
    explicit Monitor(win::HMONITOR monitor);

    double Ratio() const { return ratio_; }
    RECT Bounds() const { return ToLogical(device_); }
    RECT WorkArea() const { return ToLogical(work_); }
    POINT ToLogical(POINT device) const;
    POINT ToDevice(POINT logical) const;

  private:
    RECT ToLogical(const RECT& device) const;

    RECT device_;
    RECT work_;  // in device pixels
    double ratio_ = 1;
};

struct Screens {
    static Monitor Primary();
    // The one nearest to a point in logical pixels.
    static Monitor At(POINT logical);
    static POINT ToLogical(const win::POINT& device);
    // The rectangle as a whole on the monitor that has most of it.
    static RECT ToLogical(const win::RECT& device);
    static win::POINT ToDevice(POINT logical);

    // Device pixels a logical one.
    static double RatioOf(win::HWND window);
};

}  // namespace kvx::win32
