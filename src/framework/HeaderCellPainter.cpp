#include "framework/HeaderCellPainter.h"

#include "platform/base/SystemInfo.h"

namespace {

constexpr COLORREF kEngraved = RGB(255, 255, 255);
constexpr COLORREF kText = RGB(0, 0, 0);

int TextLeft(CDC& dc, const RECT& cell, std::string_view text, CellAlign align) {
    switch (align) {
        case CellAlign::Left:
            return cell.left + dc.GetTextExtent(" ").cx;
        case CellAlign::Centre:
            return (cell.right - dc.GetTextExtent(text).cx + cell.left) / 2;
        case CellAlign::Right:
            break;
    }
    return cell.right - dc.GetTextExtent(text).cx - dc.GetTextExtent(" ").cx;
}

}  // namespace

CHeaderCellPainter::CHeaderCellPainter()
    : borderWidth_(GetSystemMetrics(SM_CXBORDER)),
      borderHeight_(GetSystemMetrics(SM_CYBORDER)),
      face_(GetSysColor(COLOR_BTNFACE)),
      shadow_(GetSysColor(COLOR_BTNSHADOW)),
      highlight_(GetSysColor(COLOR_BTNHIGHLIGHT)),
      selection_(GetSysColor(COLOR_HIGHLIGHT)) {}

void CHeaderCellPainter::Draw(CDC& dc, const RECT& cell, std::string_view text, bool selected,
                              CellAlign align) {
    dc.DrawCell(cell, {{borderWidth_, borderHeight_},
                       highlight_.Colour(),
                       shadow_.Colour(),
                       (selected ? selection_ : face_).Colour()});
    if (!text.empty()) DrawText(dc, cell, text, selected, align);
}

void CHeaderCellPainter::DrawText(CDC& dc, const RECT& cell, std::string_view text, bool selected,
                                  CellAlign align) {
    const int mode = dc.SetBkMode(TRANSPARENT);
    const int x = TextLeft(dc, cell, text, align);
    COLORREF previous = 0;
    if (selected) {
        previous = dc.SetTextColor(GetSysColor(COLOR_HIGHLIGHTTEXT));
    } else {
        previous = dc.SetTextColor(kEngraved);
        dc.ExtTextOut(x + 1, cell.top + 1, ETO_CLIPPED, &cell, text);
        dc.SetTextColor(kText);
    }
    dc.ExtTextOut(x, cell.top, ETO_CLIPPED, &cell, text);
    dc.SetTextColor(previous);
    dc.SetBkMode(mode);
}
