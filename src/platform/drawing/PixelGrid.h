#pragma once
// Where the edges of logical pixels lie among the pixels of the screen. Every edge is rounded by
// itself, counted from the corner of the window on the desktop: rectangles that share an edge in
// logical pixels share it on the screen, in one window and across its children.

#include "platform/base/Types.h"

namespace kvx {

class PixelGrid {
  public:
    PixelGrid() = default;
    // ratio: device pixels a logical pixel; what is not above 0 counts as 1. origin: the surface's
    // corner in the window on the desktop, in logical pixels. Grids that round alike are equal.
    PixelGrid(double ratio, POINT origin);

    double Ratio() const { return ratio_; }
    // The device pixel that begins at the edge, from the surface's corner.
    std::int64_t X(std::int64_t edge) const {
        return ratio_ == 1 ? edge : Distance(edge, origin_.x);
    }
    std::int64_t Y(std::int64_t edge) const {
        return ratio_ == 1 ? edge : Distance(edge, origin_.y);
    }
    POINT ToDevice(POINT at) const {
        return ratio_ == 1 ? at : POINT{Whole(X(at.x)), Whole(Y(at.y))};
    }
    RECT ToDevice(const RECT& rect) const {
        if (ratio_ == 1) return rect;
        return {Whole(X(rect.left)), Whole(Y(rect.top)), Whole(X(rect.right)),
                Whole(Y(rect.bottom))};
    }
    // The least rectangle of whole logical pixels that covers the one in device pixels.
    RECT ToLogical(const RECT& device) const;
    // A length that is no distance of edges, as that of a dash.
    int Length(int logical) const;
    // Of a line, which stands inside its logical pixels wherever they begin; at least 1.
    int PenWidth(int logical) const;

    // To the nearest whole number, halves up; a hair below a half counts as one.
    static std::int64_t Round(double position);

    friend bool operator==(const PixelGrid&, const PixelGrid&) = default;

  private:
    std::int64_t Distance(std::int64_t edge, int origin) const;
    static int Whole(std::int64_t position);

    double ratio_ = 1;
    POINT origin_;
};

}  // namespace kvx
