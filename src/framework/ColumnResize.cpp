#include "framework/ColumnResize.h"

#include <algorithm>

#include "platform/drawing/ClientDC.h"
#include "platform/windows/Wnd.h"

CColumnResize::CColumnResize(CWnd& view, int x, Column column)
    : view_(view), x_(x), column_(std::move(column)) {
    InvertBar();
}

void CColumnResize::Draw(CDC& dc) {
    dc.InvertRect({x_ - 1, 0, x_ + 1, view_.GetClientRect().Height()});
}

void CColumnResize::InvertBar() {
    CClientDC dc(&view_);
    Draw(dc);
}

// Where the bounds cross, the least edge holds.
void CColumnResize::Move(CPoint point) {
    const int x = std::max(std::min(point.x, column_.most()), column_.least());
    if (x == x_) return;
    InvertBar();
    x_ = x;
    InvertBar();
}

void CColumnResize::Release(CPoint) {
    InvertBar();
    column_.setEdge(x_);
}

void CColumnResize::Cancel() {
    InvertBar();
}
