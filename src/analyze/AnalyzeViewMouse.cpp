// Mouse: sorting and resizing in the title row, and going to what a row tells of.

#include <limits>

#include "analyze/AnalyzeView.h"
#include "framework/ColumnResize.h"
#include "host/OSTraceService.h"
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
    const int column = static_cast<int>(*title);
    switch (Table()) {
        case EAnalysis::RunTime:
            data_->runTime.Sort(column, 0);
            break;
        case EAnalysis::RdyToRun:
            data_->rdyToRun.Sort(column, 0);
            break;
        case EAnalysis::SysCall:
            data_->sysCalls.Sort(column, 0);
            break;
    }
    Invalidate(true);
}

void COSAnalyzeView::PressRow(CPoint point) {
    const int x = point.x + Shift();
    const int k = std::max(point.y / rowHeight_ + Rows().First() - 1, 0);
    switch (Table()) {
        case EAnalysis::RunTime: {
            CRunTimeAnalysis& runTime = data_->runTime;
            if (k >= runTime.RowCount()) return;
            return PressExtreme(runTime.Find(static_cast<std::uint32_t>(runTime.Row(k))), x,
                                CRunTimeAnalysis::Max, CRunTimeAnalysis::Min);
        }
        case EAnalysis::RdyToRun: {
            CRdyToRunAnalysis& rdyToRun = data_->rdyToRun;
            if (k >= rdyToRun.RowCount()) return;
            return PressExtreme(rdyToRun.Record(rdyToRun.Row(k)), x, CRdyToRunAnalysis::Max,
                                CRdyToRunAnalysis::Min);
        }
        case EAnalysis::SysCall:
            return GoToCall(k);
    }
}

// A press on the cell of the longest or shortest interval goes to the next of its events.
template <class Record>
void COSAnalyzeView::PressExtreme(Record* record, int x, std::size_t max, std::size_t min) {
    const auto inside = [&](std::size_t which) {
        const CColumnTable::Column& column = Columns()[which];
        return column.left <= x && x < column.right;
    };
    if (!record) return;
    if (inside(max)) return record->GoToNextMax(this);
    if (inside(min)) return record->GoToNextMin(this);
}

void COSAnalyzeView::GoToCall(int row) {
    IQOSTraceService* const service = Service();
    std::uint32_t event = 0;
    if (!service || row >= data_->sysCalls.RowCount() || !IsSorted()) return;
    if (Failed(service->GetHistoryEvent(data_->sysCalls.RowHistoryIndex(row), &event))) return;
    data_->markers.SetMarker(this, kMarkerIndicator, event);
    Invalidate(true);
}
