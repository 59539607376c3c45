#pragma once
// The cell of a font, from which tables are laid out.

#include "platform/drawing/Font.h"

class CDC;
class CWnd;

struct FontCell {
    int width = 0;   // average character width in pixels
    int height = 0;  // text height plus external leading
};

// font null: the default font.
FontCell MeasureFontCell(CDC& dc, CFont* font);
FontCell MeasureFontCell(CWnd& window, CFont* font);
