#include "traceview/LineDrag.h"

#include <algorithm>

#include "trace/TraceData.h"
#include "traceview/TraceView.h"

CLineDrag::CLineDrag(COSTraceView& view, CPoint point)
    : view_(view), source_(point.y / view.lineHeight_ + view.firstLine_ - 1) {}

int CLineDrag::TargetLine(CPoint point) const {
    const int row = std::max(1, std::min(point.y / view_.lineHeight_, view_.visibleLines_ + 1));
    return row + view_.firstLine_ - 1;
}

void CLineDrag::Move(CPoint point) {
    const int target = TargetLine(point);
    if (target != view_.dropLine_ && target >= 0) {
        view_.dropLine_ = target;
        view_.Invalidate(true);
    }
    if (point.x >= view_.columns_[TraceColumns::kChart].left) return;
    if (point.y < view_.lineHeight_) view_.ScrollVertically(SB_LINEUP, 0);
    if (point.y >= view_.clientHeight_) view_.ScrollVertically(SB_LINEDOWN, 0);
}

void CLineDrag::Release(CPoint point) {
    view_.dropLine_ = -1;
    const int target = TargetLine(point);
    if (target != source_) {
        MoveLine(target);
    } else {
        ClickLine(target);
    }
}

void CLineDrag::MoveLine(int target) {
    IQOSTraceService* const service = view_.Service();
    if (!service) return;
    if (source_ < target) --target;
    target = std::max(0, std::min(target, view_.data_->contexts.GetCount() - 1));
    service->MoveContext(source_, target);
    view_.ReloadLines(true);
}

void CLineDrag::ClickLine(int target) {
    const CContextMng& contexts = view_.data_->contexts;
    if (target < contexts.GetCount()) view_.selection_.Toggle(contexts.GetKey(target));
}

void CLineDrag::Cancel() {
    view_.dropLine_ = -1;
}

HCURSOR CLineDrag::Cursor() const {
    return view_.lineDrag_;
}
