#include "framework/ColumnResize.h"

#include <algorithm>

#include "platform/ClientDC.h"
#include "platform/Wnd.h"

CColumnResize::CColumnResize(CWnd& view, int x, int least, int most,
                             std::function<void(int)> resized)
    : view_(view), x_(x), least_(least), most_(most), resized_(std::move(resized)) {
    InvertBar();
}

void CColumnResize::InvertBar() {
    CClientDC(&view_).InvertRect({x_ - 1, 0, x_ + 1, view_.GetClientRect().Height()});
}

// Where the bounds cross, the least edge holds.
void CColumnResize::Move(CPoint point) {
    const int x = std::max(std::min(point.x, most_), least_);
    if (x == x_) return;
    InvertBar();
    x_ = x;
    InvertBar();
}

void CColumnResize::Release(CPoint) {
    InvertBar();
    resized_(x_);
}

void CColumnResize::Cancel() {
    InvertBar();
}
