#pragma once
// Pens: style, width in pixels, colour.

#include "platform/base/Object.h"
#include "platform/base/Types.h"

inline constexpr int PS_SOLID = 0;
inline constexpr int PS_DASH = 1;  // 18 on, 6 off
inline constexpr int PS_DOT = 2;   // 3 on, 3 off
inline constexpr int PS_NULL = 5;

class CPen : public CObject {
  public:
    CPen() = default;
    CPen(int style, int width, COLORREF colour) { CreatePen(style, width, colour); }
    // Patterned pens are one pixel wide: a wider one is solid.
    bool CreatePen(int style, int width, COLORREF colour);
    void DeleteObject() { CreatePen(PS_SOLID, 1, 0); }
    int Style() const { return style_; }
    int Width() const { return width_; }
    COLORREF Colour() const { return colour_; }

  private:
    int style_ = PS_SOLID;
    int width_ = 1;
    COLORREF colour_ = 0;
};
