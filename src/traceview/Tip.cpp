#include "traceview/Tip.h"

#include <algorithm>
#include <string_view>

#include "framework/TipWindow.h"
#include "host/DebuggerFunctions.h"
#include "host/ModuleHost.h"
#include "platform/base/Automation.h"

namespace {

std::vector<CString> SplitLines(std::string_view text) {
    std::vector<CString> lines;
    for (std::size_t at = 0;;) {
        const auto end = text.find('\n', at);
        lines.emplace_back(text.substr(at, end == std::string_view::npos ? end : end - at));
        if (end == std::string_view::npos) return lines;
        at = end + 1;
    }
}

}  // namespace

COSTip::COSTip() = default;
COSTip::~COSTip() = default;

void COSTip::AddTipRect(const RECT& rect, std::uint32_t event) {
    rects_.push_back({rect.left, rect.top, rect.right, rect.bottom, event});
}

void COSTip::RemoveTipRects(const RECT& part) {
    std::erase_if(rects_, [&part](const CTipRect& r) {
        return r.top >= part.top && r.bottom <= part.bottom;
    });
}

int COSTip::HitTest(int x, int y, std::uint32_t* event) const {
    const auto hit = std::find_if(rects_.rbegin(), rects_.rend(), [&](const CTipRect& r) {
        return x >= r.left && x < r.right && y >= r.top && y < r.bottom;
    });
    if (hit == rects_.rend()) return 0;
    *event = hit->event;
    return 1;
}

void COSTip::TrackTip(CWnd& view, CFont* font, const COSColor& colors, int x, int y) {
    IQOSTraceService* const service =
        kvx::host::IsDebuggerLoaded() ? kvx::host::TraceService() : nullptr;
    if (!service) return;
    std::uint32_t event = 0;
    if (!HitTest(x, y, &event)) return HideTip();
    kvx::Bstr text;
    if (Failed(service->GetEventTipText(event, text.Receive()))) return HideTip();
    std::int32_t kind = 0;
    service->GetEventKind(event, &kind);
    if (!window_) {
        window_ = std::make_unique<CTipWindow>();
        if (!window_->CreateTip(view)) return window_.reset();
    }
    window_->Show(view, font, SplitLines(text.Utf8()), colors.GetTipColor(kind), {x, y});
    view_ = &view;
    view_->SetCapture();
}

void COSTip::HideTip() {
    if (!window_) return;
    window_->DestroyWindow();
    window_.reset();
    if (CWnd::GetCapture() == view_) ReleaseCapture();
}
