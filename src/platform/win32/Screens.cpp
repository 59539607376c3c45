#include "platform/win32/Screens.h"

#include <cmath>
#include <vector>

#include "platform/win32/Convert.h"

namespace kvx::win32 {

namespace {

constexpr double kPlainDpi = 96;

std::int32_t Rounded(double position) {
    return static_cast<std::int32_t>(PixelGrid::Round(position));
}

win::WINBOOL CALLBACK AddMonitor(win::HMONITOR monitor, win::HDC, win::RECT*, win::LPARAM list) {
    reinterpret_cast<std::vector<Monitor>*>(list)->emplace_back(monitor);
    return 1;
}

std::vector<Monitor> All() {
    std::vector<Monitor> monitors;
    win::EnumDisplayMonitors(nullptr, nullptr, AddMonitor,
                             reinterpret_cast<win::LPARAM>(&monitors));
    return monitors;
}

}  // namespace

Monitor::Monitor(win::HMONITOR monitor) {
    win::MONITORINFO info = {};
    info.cbSize = sizeof info;
    win::GetMonitorInfoW(monitor, &info);
    device_ = ToRect(info.rcMonitor);
    work_ = ToRect(info.rcWork);
    UINT across = 0;
    UINT down = 0;
    if (win::GetDpiForMonitor(monitor, win::MDT_EFFECTIVE_DPI, &across, &down) == 0 && across)
        ratio_ = across / kPlainDpi;
}

POINT Monitor::ToLogical(POINT device) const {
    const POINT inside = device - device_.TopLeft();
    return device_.TopLeft() + POINT{Rounded(inside.x / ratio_), Rounded(inside.y / ratio_)};
}

POINT Monitor::ToDevice(POINT logical) const {
    const POINT inside = logical - device_.TopLeft();
    return device_.TopLeft() + POINT{Rounded(inside.x * ratio_), Rounded(inside.y * ratio_)};
}

RECT Monitor::ToLogical(const RECT& device) const {
    const POINT corner = ToLogical(device.TopLeft());
    const POINT end = ToLogical(POINT{device.right, device.bottom});
    return {corner.x, corner.y, end.x, end.y};
}

Monitor Screens::Primary() {
    return Monitor(win::MonitorFromPoint({0, 0}, MONITOR_DEFAULTTOPRIMARY));
}

Monitor Screens::At(POINT logical) {
    for (const Monitor& monitor : All())
        if (monitor.Bounds().PtInRect(logical)) return monitor;
    return Monitor(win::MonitorFromPoint({logical.x, logical.y}, MONITOR_DEFAULTTONEAREST));
}

POINT Screens::ToLogical(const win::POINT& device) {
    return Monitor(win::MonitorFromPoint(device, MONITOR_DEFAULTTONEAREST))
        .ToLogical(ToPoint(device));
}

RECT Screens::ToLogical(const win::RECT& device) {
    const Monitor monitor(win::MonitorFromRect(&device, MONITOR_DEFAULTTONEAREST));
    const POINT corner = monitor.ToLogical(POINT{ToRect(device).left, ToRect(device).top});
    const POINT end = monitor.ToLogical(POINT{ToRect(device).right, ToRect(device).bottom});
    return {corner.x, corner.y, end.x, end.y};
}

win::POINT Screens::ToDevice(POINT logical) {
    const POINT device = At(logical).ToDevice(logical);
    return {device.x, device.y};
}

double Screens::RatioOf(win::HWND window) {
    const UINT dpi = win::GetDpiForWindow(window);
    return dpi ? dpi / kPlainDpi : 1;
}

}  // namespace kvx::win32
