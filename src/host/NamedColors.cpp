#include "host/NamedColors.h"

#include <iterator>

namespace {

struct NamedColor {
    const char* name;
    COLORREF color;
};

constexpr NamedColor kColors[] = {
    {"WHITE", RGB(255, 255, 255)},
    {"BLACK", RGB(0, 0, 0)},
    {"GREY", RGB(160, 160, 160)},
    {"BLUE", RGB(0, 0, 255)},
    {"RED", RGB(255, 0, 0)},
    {"GREEN", RGB(0, 255, 0)},
    {"YELLOW", RGB(255, 255, 0)},
    {"PURPLE", RGB(255, 0, 255)},
    {"CYAN", RGB(0, 255, 255)},
    {"DARKGREY", RGB(128, 128, 128)},
    {"DARKBLUE", RGB(0, 0, 128)},
    {"DARKRED", RGB(128, 0, 0)},
    {"DARKGREEN", RGB(0, 128, 0)},
    {"DARKYELLOW", RGB(128, 128, 0)},
    {"DARKPURPLE", RGB(128, 0, 128)},
    {"DARKCYAN", RGB(0, 128, 128)},
    {"LIGHTGREY", RGB(229, 225, 223)},
    {"SYSTEM", 0},
    {"HIGHLIGHT", 0},
    {"MEDGREY", RGB(179, 179, 179)},
};

bool InTable(int index) {
    return index >= 0 && index < static_cast<int>(std::size(kColors));
}

}  // namespace

const char* NameOfColor(int index) {
    return InTable(index) ? kColors[index].name : "UNKNOWN";
}

int IndexOfColor(std::string_view name) {
    for (int i = 0; InTable(i); ++i) {
        if (name == kColors[i].name) return i;
    }
    return -1;
}

bool ColorOfIndex(int index, COLORREF* color) {
    const bool plain = InTable(index) && index != kColorSystem && index != kColorHighlight;
    *color = kColors[plain ? index : 0].color;
    return plain;
}
