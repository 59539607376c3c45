#include "platform/drawing/Brush.h"

bool CBrush::CreateSolidBrush(COLORREF colour) {
    hatch_ = kHatchNone;
    null_ = false;
    colour_ = colour;
    return true;
}

bool CBrush::CreateHatchBrush(int hatch, COLORREF colour) {
    if (hatch < HS_HORIZONTAL || hatch > HS_DIAGCROSS) return false;
    hatch_ = hatch;
    null_ = false;
    colour_ = colour;
    return true;
}

void CBrush::CreateNullBrush() {
    CreateSolidBrush(0xFFFFFFu);
    null_ = true;
}
