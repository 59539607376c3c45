#include "traceview/ColumnResize.h"

#include "platform/ClientDC.h"
#include "platform/Wnd.h"

CColumnResize::CColumnResize(CWnd& view, TraceColumns& columns, std::size_t column, int charWidth,
                             std::function<void()> resized)
    : view_(view),
      columns_(columns),
      column_(column),
      charWidth_(charWidth),
      resized_(std::move(resized)),
      x_(columns[column].right) {
    InvertBar();
}

void CColumnResize::InvertBar() {
    CClientDC(&view_).InvertRect({x_ - 1, 0, x_ + 1, view_.GetClientRect().Height()});
}

void CColumnResize::Move(CPoint point) {
    const int x = columns_.ClampEdge(column_, point.x, view_.GetClientRect().Width());
    if (x == x_) return;
    InvertBar();
    x_ = x;
    InvertBar();
}

void CColumnResize::Release(CPoint) {
    InvertBar();
    columns_.SetRightEdge(column_, x_, charWidth_);
    resized_();
}

void CColumnResize::Cancel() { InvertBar(); }
