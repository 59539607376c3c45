#include "workbench/picture/Page.h"

#include "framework/InstanceDataCtrl.h"
#include "platform/StatusLine.h"
#include "platform/SystemInfo.h"
#include "workbench/picture/SvgGraphics.h"

namespace kvx::picture {

Page::Page(service::TraceService& service, const cli::Streams& streams)
    : service_(service), view_(streams) {
    font_.CreatePointFont(kDefaultPoints * 10, kDefaultFace);
    SvgGraphics ruler;
    CDC dc(&ruler);
    statusCell_ = MeasureFontCell(dc, nullptr);
    cell_ = MeasureFontCell(dc, &font_);
}

int Page::StatusHeight() const {
    return StatusLineHeight(statusCell_.height);
}

COLORREF Page::Ground() {
    return GetSysColor(COLOR_WINDOW);
}

void Page::DrawStatus(CDC& dc) {
    const SIZE bar = StatusSize();
    dc.FillSolidRect(0, 0, bar.cx, bar.cy, GetSysColor(COLOR_3DFACE));
    DrawStatusParts(dc, StatusPartsOf(dc, kStatusHorizontalBorder, StatusTexts()), bar);
}

void Page::DrawSvgBody(SvgGraphics& graphics) {
    CDC dc(&graphics);
    DrawBody(dc);
}

std::string Page::Svg() {
    SvgGraphics graphics;
    {
        CDC dc(&graphics);
        DrawStatus(dc);
    }
    graphics.BeginGroup("transform=\"translate(0 " + std::to_string(StatusHeight()) + ")\"");
    DrawSvgBody(graphics);
    graphics.EndGroup();
    return graphics.Finish(Size(), Ground());
}

}  // namespace kvx::picture
