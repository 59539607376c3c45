// Mouse: sorting and resizing in the title row, and going to what a row tells of.

#include <algorithm>
#include <limits>

#include "analyze/AnalyzeView.h"
#include "framework/ColumnResize.h"
#include "trace/TraceData.h"

void COSAnalyzeView::OnMouseMove(UINT, CPoint point) {
    if (gesture_.IsOn()) {
        gesture_.Move(point);
    } else {
        const bool onEdge = point.y < rowHeight_ && Columns().EdgeAt(point.x + Shift());
        SetCursor(LoadStandardCursor(onEdge ? IDC_SIZEWE : IDC_ARROW));
    }
    Default();
}

void COSAnalyzeView::OnLButtonDown(UINT flags, CPoint point) {
    if (data_ && rowHeight_ > 0 && !gesture_.IsOn()) {
        point.y < rowHeight_ ? PressTitle(point) : PressRow(point);
    }
    CCoreView::OnLButtonDown(flags, point);
}

void COSAnalyzeView::OnLButtonUp(UINT, CPoint point) {
    gesture_.Release(point);
    Default();
}

void COSAnalyzeView::OnCaptureChanged() {
    gesture_.Cancel();
}

void COSAnalyzeView::OnCancelMode() {
    gesture_.Cancel();
    Default();
}

// The drag begins at the pointer; the edge goes there with the release.
std::unique_ptr<IGesture> COSAnalyzeView::ResizeAt(CPoint point) {
    const auto found = Columns().EdgeAt(point.x + Shift());
    if (!found) return nullptr;
    const auto left = [this, &columns = Columns(), which = *found] {
        return columns[which].left - Shift();
    };
    return std::make_unique<CColumnResize>(
        *this, point.x,
        CColumnResize::Column{[left] { return left() + CColumnTable::kLeastWidth; },
                              [] { return std::numeric_limits<int>::max(); },
                              [this, &columns = Columns(), which = *found](int edge) {
                                  columns.SetRightEdge(which, edge + Shift(), charWidth_);
                                  LayOutColumns();
                                  SettingsChanged();
                              }});
}

void COSAnalyzeView::PressTitle(CPoint point) {
    if (auto resize = ResizeAt(point)) return gesture_.Begin(std::move(resize), point);
    const auto title = Columns().TitleAt(point.x + Shift());
    if (!title) return;
    Analysis().Sort(static_cast<int>(*title), 0);
    Invalidate(true);
}

void COSAnalyzeView::PressRow(CPoint point) {
    const int k = std::max(point.y / rowHeight_ + Rows().First() - 1, 0);
    if (k >= RowCount() || !IsSorted()) return;
    const int x = point.x + Shift();
    const auto under = [x](const CColumnTable::Column& column) {
        return column.left <= x && x < column.right;
    };
    const auto column = std::ranges::find_if(Columns(), under);
    const int row = Analysis().Row(k);
    Analysis().GoTo(row, static_cast<int>(column - Columns().begin()), this);
}
