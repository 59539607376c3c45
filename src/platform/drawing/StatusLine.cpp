#include "platform/drawing/StatusLine.h"

#include <algorithm>

#include "platform/base/SystemInfo.h"
#include "platform/base/Text.h"

namespace kvx {

namespace {

constexpr int kTextMargin = 2;  // from a part's left edge
constexpr int kPartMargin = 6;  // pixels that a part is wider than its text

// The text, or as much of its beginning as fits before an ellipsis.
CString FittingText(CDC& dc, const CString& text, int room) {
    if (dc.GetTextExtent(text).cx <= room) return text;
    const CString ellipsis = "\u2026";
    std::size_t length = text.size();
    while (length > 0) {
        const CString shorter(Utf8Prefix(text, --length));
        length = shorter.size();
        if (dc.GetTextExtent(shorter + ellipsis).cx <= room) return shorter + ellipsis;
    }
    return ellipsis;
}

// One pixel on each side.
void DrawEdge(CDC& dc, const RECT& r, COLORREF topLeft, COLORREF bottomRight) {
    dc.FillSolidRect({r.left, r.top, r.right - 1, r.top + 1}, topLeft);
    dc.FillSolidRect({r.left, r.top, r.left + 1, r.bottom - 1}, topLeft);
    dc.FillSolidRect({r.left, r.bottom - 1, r.right, r.bottom}, bottomRight);
    dc.FillSolidRect({r.right - 1, r.top, r.right, r.bottom}, bottomRight);
}

void DrawPart(CDC& dc, const StatusPart& part, const RECT& rect, SIZE bar) {
    const COLORREF light = GetSysColor(COLOR_BTNHIGHLIGHT);
    const COLORREF dark = GetSysColor(COLOR_BTNSHADOW);
    if (part.type == SBT_SUNKEN) DrawEdge(dc, rect, dark, light);
    if (part.type == SBT_POPOUT) DrawEdge(dc, rect, light, dark);
    if (part.text.empty()) return;
    const int y = rect.top + (rect.Height() - dc.GetTextExtent(part.text).cy) / 2;
    dc.ExtTextOut(rect.left + kTextMargin, y, ETO_CLIPPED, &rect,
                  FittingText(dc, part.text, RoomForStatusText(rect, bar)));
}

}  // namespace

std::vector<StatusPart> StatusPartsOf(CDC& dc, int x, const std::vector<CString>& texts) {
    std::vector<StatusPart> parts;
    for (const CString& text : texts) {
        parts.push_back({x + dc.GetTextExtent(text).cx + kPartMargin, text});
        x = parts.back().right + kStatusSpacing;
    }
    return parts;
}

RECT StatusPartArea(const std::vector<StatusPart>& parts, std::size_t which, SIZE bar) {
    const int right = parts[which].right;
    return {which == 0 ? kStatusHorizontalBorder : parts[which - 1].right + kStatusSpacing,
            kStatusVerticalBorder, right < 0 ? bar.cx : right, bar.cy};
}

int RoomForStatusText(const RECT& area, SIZE bar) {
    return std::min(area.right, bar.cx) - area.left - kTextMargin;
}

void DrawStatusParts(CDC& dc, const std::vector<StatusPart>& parts, SIZE bar) {
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(GetSysColor(COLOR_BTNTEXT));
    for (std::size_t i = 0; i < parts.size(); ++i)
        DrawPart(dc, parts[i], StatusPartArea(parts, i, bar), bar);
}

}  // namespace kvx
