#include "platform/win32/Desktop.h"

#include "platform/win32/Convert.h"
#include "platform/win32/Screens.h"

namespace kvx::win32 {

namespace {

// Pictures that no screen shows have the same colours on every system: those of the light palette
// that other back-ends draw such pictures with.
std::optional<COLORREF> PictureColour(int index) {
    const auto grey = [](unsigned level) { return ::RGB(level, level, level); };
    switch (index) {
        case COLOR_WINDOW:
        case COLOR_BTNHIGHLIGHT:
        case COLOR_HIGHLIGHTTEXT:
            return grey(255);
        case COLOR_WINDOWTEXT:
        case COLOR_BTNTEXT:
        case COLOR_MENUTEXT:
        case COLOR_INFOTEXT:
            return grey(0);
        case COLOR_BTNFACE:
        case COLOR_MENU:
            return grey(239);
        case COLOR_BTNSHADOW:
            return grey(159);
        case COLOR_3DLIGHT:
            return grey(202);
        case COLOR_3DDKSHADOW:
        case COLOR_WINDOWFRAME:
            return grey(118);
        case COLOR_HIGHLIGHT:
            return ::RGB(48, 140, 198);
        case COLOR_GRAYTEXT:
            return grey(190);
        case COLOR_SCROLLBAR:
            return grey(184);
        case COLOR_INFOBK:
            return ::RGB(255, 255, 220);
        default:
            return {};
    }
}

}  // namespace

std::optional<COLORREF> Desktop::SysColor(int index) const {
    if (screen_ == Screen::None) return PictureColour(index);
    if (!win::GetSysColorBrush(index)) return {};
    return static_cast<COLORREF>(win::GetSysColor(index));
}

SIZE Desktop::ScreenSize() const {
    return Screens::Primary().Bounds().Size();
}

RECT Desktop::WorkArea(POINT at) const {
    return Screens::At(at).WorkArea();
}

POINT Desktop::CursorPosition() const {
    win::POINT at = {};
    win::GetCursorPos(&at);
    return Screens::ToLogical(at);
}

void Desktop::ShowCursor(HCURSOR cursor) {
    win::SetCursor(ToSystem(cursor));
}

bool Desktop::IsKeyDown(UINT key) const {
    return win::GetKeyState(static_cast<int>(key)) < 0;
}

void Desktop::Beep(UINT kind) {
    win::MessageBeep(kind);
}

}  // namespace kvx::win32
