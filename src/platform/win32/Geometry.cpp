#include "platform/win32/Geometry.h"

#include <algorithm>

#include "platform/win32/Convert.h"
#include "platform/win32/OwnWindow.h"
#include "platform/win32/PlainWindow.h"

namespace kvx::win32 {

namespace {

// The corner of the client area in that of the window on the desktop. What was made here knows
// where it was put; of others it is what the pixels say.
POINT OriginInTop(win::HWND window) {
    const win::HWND top = win::GetAncestor(window, GA_ROOT);
    if (!top || window == top) return {};
    const auto own = OwnWindow::Of(window);
    if (own && own->IsChild()) {
        const int edge = own->Frame().Width();
        return OriginInTop(win::GetAncestor(window, GA_PARENT)) + own->Place().TopLeft() +
               POINT{edge, edge};
    }
    win::POINT corner = {};
    win::MapWindowPoints(window, top, &corner, 1);
    const POINT at = ToPoint(corner);
    return Divided({at.x, at.y, at.x, at.y}, Screens::RatioOf(window)).TopLeft();
}

SIZE DeviceClientSize(win::HWND window) {
    win::RECT client = {};
    win::GetClientRect(window, &client);
    return ToRect(client).Size();
}

}  // namespace

PixelGrid GridOf(win::HWND window) {
    const double ratio = Screens::RatioOf(window);
    return ratio == 1 ? PixelGrid() : PixelGrid(ratio, OriginInTop(window));
}

POINT ClientOriginOf(win::HWND window) {
    win::POINT corner = {};
    win::ClientToScreen(win::GetAncestor(window, GA_ROOT), &corner);
    return Screens::ToLogical(corner) + OriginInTop(window);
}

SIZE ClientSizeOf(win::HWND window) {
    const auto own = OwnWindow::Of(window);
    const auto* const plain = dynamic_cast<const PlainWindow*>(own.get());
    SIZE size;
    if (plain && plain->IsChild()) {
        const int edges = 2 * plain->Frame().Width();
        size = plain->Place().Size();
        size = {size.cx - edges, size.cy - edges};
    } else {
        const SIZE device = DeviceClientSize(window);
        size = Divided({0, 0, device.cx, device.cy}, Screens::RatioOf(window)).Size();
    }
    const SIZE bars = plain ? plain->BarSize() : SIZE{};
    return {std::max(size.cx - bars.cx, 0), std::max(size.cy - bars.cy, 0)};
}

RECT BoundsOf(win::HWND window) {
    const auto own = OwnWindow::Of(window);
    if (own && own->IsChild()) return own->Place();
    if (window == win::GetAncestor(window, GA_ROOT)) {
        win::RECT device = {};
        win::GetWindowRect(window, &device);
        return Screens::ToLogical(device);
    }
    return Divided(DeviceBounds(window), Screens::RatioOf(window));
}

RECT DeviceBounds(win::HWND window) {
    win::RECT bounds = {};
    win::GetWindowRect(window, &bounds);
    win::MapWindowPoints(nullptr, win::GetAncestor(window, GA_PARENT),
                         reinterpret_cast<win::POINT*>(&bounds), 2);
    return ToRect(bounds);
}

RECT Divided(const RECT& device, double ratio) {
    const auto part = [ratio](std::int32_t edge) {
        return static_cast<std::int32_t>(PixelGrid::Round(edge / ratio));
    };
    return {part(device.left), part(device.top), part(device.right), part(device.bottom)};
}

void PlaceChildren(win::HWND window) {
    for (win::HWND child = win::GetWindow(window, GW_CHILD); child;
         child = win::GetWindow(child, GW_HWNDNEXT))
        if (const auto own = OwnWindow::Of(child)) own->SetPlace(own->Place());
}

}  // namespace kvx::win32
