#pragma once
// Brushes: solid, hatched or empty. Hatches are 8 x 8 pixels, anchored to the surface; between
// their lines they show the background colour, or nothing when the background mode is transparent.

#include "platform/base/Object.h"
#include "platform/base/Types.h"

inline constexpr int HS_HORIZONTAL = 0;
inline constexpr int HS_VERTICAL = 1;
inline constexpr int HS_FDIAGONAL = 2;
inline constexpr int HS_BDIAGONAL = 3;
inline constexpr int HS_CROSS = 4;
inline constexpr int HS_DIAGCROSS = 5;
inline constexpr int kHatchNone = -1;  // solid

class CBrush : public CObject {
  public:
    CBrush() = default;
    explicit CBrush(COLORREF colour) { CreateSolidBrush(colour); }
    CBrush(int hatch, COLORREF colour) { CreateHatchBrush(hatch, colour); }
    bool CreateSolidBrush(COLORREF colour);
    bool CreateHatchBrush(int hatch, COLORREF colour);
    void CreateNullBrush();
    void DeleteObject() { CreateSolidBrush(0xFFFFFFu); }
    bool IsNull() const { return null_; }
    int Hatch() const { return hatch_; }
    COLORREF Colour() const { return colour_; }

  private:
    int hatch_ = kHatchNone;
    bool null_ = false;
    COLORREF colour_ = 0xFFFFFFu;
};
