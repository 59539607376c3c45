#include "platform/base/SystemInfo.h"

#include <chrono>

#include "platform/Backend.h"
#include "platform/base/Keys.h"

namespace {

// The classic light colours, for pictures without a toolkit.
COLORREF ClassicColour(int index) {
    switch (index) {
        case COLOR_WINDOW:
        case COLOR_HIGHLIGHTTEXT:
        case COLOR_BTNHIGHLIGHT:
            return RGB(255, 255, 255);
        case COLOR_HIGHLIGHT:
            return RGB(0, 0, 128);
        case COLOR_SCROLLBAR:
        case COLOR_MENU:
        case COLOR_BTNFACE:
            return RGB(192, 192, 192);
        case COLOR_BTNSHADOW:
        case COLOR_GRAYTEXT:
            return RGB(128, 128, 128);
        case COLOR_3DLIGHT:
            return RGB(223, 223, 223);
        case COLOR_INFOBK:
            return RGB(255, 255, 225);
        default:
            return RGB(0, 0, 0);
    }
}

SIZE ScreenSize() {
    kvx::IBackend* backend = kvx::InstalledBackend();
    return backend ? backend->Desktop().ScreenSize() : SIZE{};
}

bool g_lightOnly = false;

bool HasDarkWindows(kvx::IBackend& backend) {
    const auto window = backend.Desktop().SysColor(COLOR_WINDOW);
    constexpr unsigned kMiddle = 3 * 128;
    return window && GetRValue(*window) + GetGValue(*window) + GetBValue(*window) < kMiddle;
}

}  // namespace

int GetSystemMetrics(int index) {
    switch (index) {
        case SM_CXSCREEN:
            return ScreenSize().cx;
        case SM_CYSCREEN:
            return ScreenSize().cy;
        case SM_CXVSCROLL:
        case SM_CYHSCROLL:
            return 16;
        case SM_CYCAPTION:
            return 22;
        case SM_CXBORDER:
        case SM_CYBORDER:
            return 1;
        case SM_CYMENU:
            return 22;
        case SM_CXFRAME:
        case SM_CYFRAME:
            return 4;
        case SM_CXEDGE:
        case SM_CYEDGE:
            return 2;
        default:
            return 0;
    }
}

void RequireLightSysColors() {
    g_lightOnly = true;
}

bool AreSysColorsLight() {
    return g_lightOnly;
}

COLORREF GetSysColor(int index) {
    kvx::IBackend* backend = kvx::InstalledBackend();
    if (!backend || (g_lightOnly && HasDarkWindows(*backend))) return ClassicColour(index);
    return backend->Desktop().SysColor(index).value_or(ClassicColour(index));
}

DWORD GetTickCount() {
    using namespace std::chrono;
    const auto now = steady_clock::now().time_since_epoch();
    return static_cast<DWORD>(duration_cast<milliseconds>(now).count());
}

void MessageBeep(UINT kind) {
    if (kvx::IBackend* backend = kvx::InstalledBackend()) backend->Desktop().Beep(kind);
}

CPoint GetCursorPos() {
    return kvx::Backend().Desktop().CursorPosition();
}

RECT GetWorkArea(POINT screen) {
    return kvx::Backend().Desktop().WorkArea(screen);
}

short GetKeyState(UINT key) {
    kvx::IBackend* backend = kvx::InstalledBackend();
    return backend && backend->Desktop().IsKeyDown(key) ? static_cast<short>(-32768) : short{0};
}
