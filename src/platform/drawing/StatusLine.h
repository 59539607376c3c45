#pragma once
// How a status bar looks: parts side by side, each with a text.

#include <vector>

#include "platform/drawing/DC.h"

inline constexpr int SBT_SUNKEN = 0;
inline constexpr int SBT_NOBORDERS = 0x0100;
inline constexpr int SBT_POPOUT = 0x0200;

namespace kvx {

struct StatusPart {
    int right = -1;  // edge from the bar's left one; -1: the bar's end
    CString text;
    int type = SBT_SUNKEN;
};

// Pixels around and between the parts.
inline constexpr int kStatusHorizontalBorder = 0;
inline constexpr int kStatusVerticalBorder = 2;
inline constexpr int kStatusSpacing = 2;

// Of a bar, edges left out; lineHeight is that of its font.
constexpr int StatusLineHeight(int lineHeight) {
    return lineHeight + 2 * kStatusVerticalBorder;
}

// Parts, each as wide as its text in the selected font, the first one from x on.
std::vector<StatusPart> StatusPartsOf(CDC& dc, int x, const std::vector<CString>& texts);
// The area of a part in a bar of that size.
RECT StatusPartArea(const std::vector<StatusPart>& parts, std::size_t which, SIZE bar);
// Pixels for a text in the area.
int RoomForStatusText(const RECT& area, SIZE bar);
// Draws the parts in the selected font; a text that has no room ends in an ellipsis.
void DrawStatusParts(CDC& dc, const std::vector<StatusPart>& parts, SIZE bar);

}  // namespace kvx
