#pragma once
// What a window and the windows in it have drawn, whatever shows it: their surfaces, put together
// at their places. Scroll bars, edges and controls, which the toolkit draws, have a colour of their
// own.

#include <algorithm>

#include "platform/Backend.h"
#include "platform/base/Rects.h"
#include "platform/windows/WindowMap.h"
#include "platform/windows/WindowState.h"
#include "platform/windows/Wnd.h"

namespace kvx::test {

constexpr COLORREF kNotDrawn = RGB(1, 2, 3);

inline void AddDrawing(Surface& picture, HWND window, POINT corner) {
    IWindows& windows = Backend().Windows();
    WindowState* const state = WindowState::Of(FindWindow(window));
    const POINT at = picture.Grid().ToDevice(windows.ClientOrigin(window) - corner);
    RECT whole = windows.ScreenBounds(window);
    whole.OffsetRect(POINT{} - corner);
    whole = Intersection(picture.Grid().ToDevice(whole), picture.DeviceBounds());
    for (int y = whole.top; y < whole.bottom; ++y)
        std::fill_n(picture.Row(y) + whole.left, whole.Width(), ToPixel(kNotDrawn));
    if (const auto drawn = state ? state->Picture() : nullptr) {
        const RECT part = Intersection(RectAt(at, drawn->DeviceSize()), picture.DeviceBounds());
        for (int y = part.top; y < part.bottom; ++y)
            std::copy_n(drawn->Row(y - at.y) + part.left - at.x, part.Width(),
                        picture.Row(y) + part.left);
    }
    for (const HWND child : windows.Children(window))
        if (windows.IsShown(child) && windows.TopLevel(child) != child)
            AddDrawing(picture, child, corner);
}

// Of the client area, in the pixels of the screen. Paints what is not painted yet.
inline Surface DrawingOf(HWND window) {
    IWindows& windows = Backend().Windows();
    Surface picture(windows.ClientSize(window), kNotDrawn, windows.Grid(window));
    AddDrawing(picture, window, windows.ClientOrigin(window));
    return picture;
}

// The innermost window at a point of the window's client area; the window itself where none is.
inline HWND WindowAt(HWND window, POINT at) {
    IWindows& windows = Backend().Windows();
    const POINT screen = windows.ClientOrigin(window) + at;
    for (const HWND child : windows.Children(window))
        if (windows.IsShown(child) && windows.TopLevel(child) != child &&
            windows.ScreenBounds(child).PtInRect(screen))
            return WindowAt(child, screen - windows.ClientOrigin(child));
    return window;
}

}  // namespace kvx::test
