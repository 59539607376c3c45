#include "framework/SystemColors.h"

#include "platform/base/SystemInfo.h"

COLORREF ResolveColor(int index, bool background) {
    if (index == kColorSystem) return GetSysColor(background ? COLOR_WINDOW : COLOR_WINDOWTEXT);
    if (index == kColorHighlight) {
        return GetSysColor(background ? COLOR_HIGHLIGHT : COLOR_HIGHLIGHTTEXT);
    }
    COLORREF color = 0;
    ColorOfIndex(index, &color);
    return color;
}
