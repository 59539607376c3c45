#include "platform/win32/PaintFrame.h"

#include "platform/win32/Convert.h"
#include "platform/win32/Geometry.h"

namespace kvx::win32 {

namespace {

void Fill(win::HDC dc, const RECT& rect, int colour) {
    const win::RECT part = ToSystem(rect);
    const win::HBRUSH brush = win::CreateSolidBrush(GetSysColor(colour));
    win::FillRect(dc, &part, brush);
    win::DeleteObject(brush);
}

win::BITMAPINFO Describe(SIZE size) {
    win::BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = size.cx;
    info.bmiHeader.biHeight = -size.cy;  // the first row on top
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    return info;
}

// Draws the outermost logical pixel of what is left, and takes it away.
class Edges {
  public:
    Edges(win::HDC dc, const RECT& outer, double ratio)
        : dc_(dc), outer_(outer), grid_(ratio, {0, 0}) {}

    void Draw(int topLeft, int bottomRight) {
        const auto width = static_cast<std::int32_t>(grid_.X(depth_ + 1) - grid_.X(depth_));
        ++depth_;
        RECT r = outer_;
        Fill(dc_, {r.left, r.top, r.right, r.top + width}, topLeft);
        Fill(dc_, {r.left, r.top, r.left + width, r.bottom}, topLeft);
        Fill(dc_, {r.left, r.bottom - width, r.right, r.bottom}, bottomRight);
        Fill(dc_, {r.right - width, r.top, r.right, r.bottom}, bottomRight);
        outer_.DeflateRect(width, width);
    }

  private:
    win::HDC dc_;
    RECT outer_;
    PixelGrid grid_;
    int depth_ = 0;
};

// The client area, from the window's own corner.
RECT ClientInWindow(win::HWND window) {
    win::RECT bounds = {};
    win::RECT client = {};
    win::GetWindowRect(window, &bounds);
    win::GetClientRect(window, &client);
    win::MapWindowPoints(window, nullptr, reinterpret_cast<win::POINT*>(&client), 2);
    RECT inside = ToRect(client);
    inside.OffsetRect(POINT{} - ToRect(bounds).TopLeft());
    return inside;
}

}  // namespace

// A pixel of the surface is a pixel of the screen. A surface of another ratio than the window's is
// shown scaled until the next one comes.
void PaintClient(win::HDC dc, win::HWND window, const Surface* surface) {
    const SIZE size = surface ? surface->DeviceSize() : SIZE{};
    const PixelGrid grid = GridOf(window);
    const SIZE client = ClientSizeOf(window);
    const RECT shown = grid.ToDevice(RECT{0, 0, client.cx, client.cy});
    win::RECT whole = {};
    win::GetClientRect(window, &whole);
    const RECT all = ToRect(whole);
    Fill(dc, {shown.right, shown.bottom, all.right, all.bottom}, COLOR_3DFACE);
    if (size.cx <= 0 || size.cy <= 0) return;
    const win::BITMAPINFO info = Describe(size);
    if (surface->Grid().Ratio() == grid.Ratio())
        win::SetDIBitsToDevice(dc, 0, 0, static_cast<UINT>(size.cx), static_cast<UINT>(size.cy), 0,
                               0, 0, static_cast<UINT>(size.cy), surface->Data(), &info,
                               DIB_RGB_COLORS);
    else
        win::StretchDIBits(dc, 0, 0, shown.right, shown.bottom, 0, 0, size.cx, size.cy,
                           surface->Data(), &info, DIB_RGB_COLORS, SRCCOPY);
}

void PaintFrame(win::HWND window, const WindowFrame& frame) {
    const RECT client = ClientInWindow(window);
    const double ratio = Screens::RatioOf(window);
    const win::HDC dc = win::GetWindowDC(window);
    win::ExcludeClipRect(dc, client.left, client.top, client.right, client.bottom);
    const int width = PixelGrid(ratio, {0, 0}).Length(frame.Width());
    RECT outer = client;
    outer.DeflateRect(-width, -width);
    Edges edges(dc, outer, ratio);
    if (frame.raised) {
        edges.Draw(COLOR_3DLIGHT, COLOR_3DDKSHADOW);
        edges.Draw(COLOR_BTNHIGHLIGHT, COLOR_BTNSHADOW);
    }
    if (frame.border) edges.Draw(COLOR_WINDOWFRAME, COLOR_WINDOWFRAME);
    if (frame.sunken) {
        edges.Draw(COLOR_BTNSHADOW, COLOR_BTNHIGHLIGHT);
        edges.Draw(COLOR_3DDKSHADOW, COLOR_3DLIGHT);
    }
    win::ReleaseDC(window, dc);
}

}  // namespace kvx::win32
