#pragma once
// Draws the cells of the tables: a text on a face that stands out like a key. The colours are those
// of the system when the painter is made.

#include <string_view>

#include "platform/drawing/Brush.h"
#include "platform/drawing/DC.h"

enum class CellAlign { Left = 0, Centre = 1, Right = 2 };

class CHeaderCellPainter {
  public:
    CHeaderCellPainter();
    virtual ~CHeaderCellPainter() = default;

    // The text is clipped to the cell. A selected cell has the selection's face and plain text;
    // the others an engraved text.
    void Draw(CDC& dc, const RECT& cell, std::string_view text, bool selected, CellAlign align);

  private:
    void DrawText(CDC& dc, const RECT& cell, std::string_view text, bool selected, CellAlign align);

    int borderWidth_;
    int borderHeight_;
    CBrush face_;
    CBrush shadow_;
    CBrush highlight_;
    CBrush selection_;
};
