#include "workbench/picture/PicturePage.h"

#include "framework/InstanceDataCtrl.h"
#include "platform/base/SystemInfo.h"
#include "platform/drawing/StatusLine.h"
#include "workbench/picture/SvgGraphics.h"

namespace kvx::picture {

PicturePage::PicturePage(service::TraceService& service, const cli::Streams& streams)
    : service_(service), view_(streams) {
    font_.CreatePointFont(kDefaultPoints * 10, kDefaultFace);
    SvgGraphics ruler;
    CDC dc(&ruler);
    statusCell_ = MeasureFontCell(dc, nullptr);
    cell_ = MeasureFontCell(dc, &font_);
}

int PicturePage::StatusHeight() const {
    return StatusLineHeight(statusCell_.height);
}

COLORREF PicturePage::Ground() {
    return GetSysColor(COLOR_WINDOW);
}

void PicturePage::DrawStatus(CDC& dc) {
    const SIZE bar = StatusSize();
    dc.FillSolidRect(0, 0, bar.cx, bar.cy, GetSysColor(COLOR_3DFACE));
    DrawStatusParts(dc, StatusPartsOf(dc, kStatusHorizontalBorder, StatusTexts()), bar);
}

void PicturePage::DrawSvgBody(SvgGraphics& graphics) {
    CDC dc(&graphics);
    DrawBody(dc);
}

std::string PicturePage::Svg() {
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
