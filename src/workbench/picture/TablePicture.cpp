#include "workbench/picture/TablePicture.h"

#include <algorithm>

#include "analyze/TablePainter.h"
#include "platform/base/SystemInfo.h"
#include "traceview/model/MarkText.h"
#include "workbench/cli/MarkedRange.h"

namespace kvx::picture {

TablePicture::TablePicture(service::TraceService& service, const cli::Streams& streams,
                           EAnalysis table)
    : PicturePage(service, streams), table_(table) {
    columns_.SetCharWidth(cell_.width);
    columns_.LayOut();
}

std::string TablePicture::LayOut(std::optional<SIZE> size, SIZE most, const PictureRange& range) {
    cli::DecodeAll(data_, view_);
    std::string failure = cli::MarkRange(data_, service_, range.start, range.end);
    const int rows = std::min(data_.Table(table_).RowCount(), most.cy / std::max(cell_.height, 1));
    const SIZE whole = {columns_[table_].TotalWidth(), StatusHeight() + (rows + 1) * cell_.height};
    size_ = size.value_or(SIZE{std::min(whole.cx, most.cx), std::min(whole.cy, most.cy)});
    return failure;
}

std::vector<CString> TablePicture::StatusTexts() {
    return {MarkText(data_.engine, data_.markers)};
}

void TablePicture::DrawBody(CDC& dc) {
    dc.SelectObject(&font_);
    dc.SetTextColor(GetSysColor(COLOR_WINDOWTEXT));
    dc.SetBkColor(GetSysColor(COLOR_WINDOW));
    table::Geometry geometry;
    geometry.rowHeight = cell_.height;
    geometry.charWidth = cell_.width;
    geometry.visibleRows = BodySize().cy / cell_.height - 1;
    const bool shown = data_.engine.IsValid() && data_.Table(table_).IsReadable();
    table::DrawTable(dc, painter_, geometry, columns_[table_],
                     shown ? &data_.Table(table_) : nullptr, data_.colors[EColor::Run]);
}

}  // namespace kvx::picture
