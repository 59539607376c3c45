#include "analyze/RowWindow.h"

#include <algorithm>

namespace kvx {

bool RowWindow::Scroll(int n, int rows, int visible) {
    const int below = std::max(rows - first_ - std::max(visible, 0), 0);
    const int moved = std::clamp(n, -below, first_);
    first_ -= moved;
    return moved != 0;
}

void RowWindow::FillLastPage(int rows, int visible) {
    const int empty = visible - (rows - first_);
    if (empty > 0) first_ = std::max(first_ - empty, 0);
}

void RowWindow::Clamp(int rows) {
    first_ = std::clamp(first_, 0, std::max(rows - 1, 0));
}

void RowWindow::Show(int row, int rows, int visible) {
    if (row >= first_ && row < first_ + visible) return;
    first_ = row;
    Scroll(visible / 2, rows, visible);
    FillLastPage(rows, visible);
}

void RowWindow::StayAbove(int rows, int visible) {
    const int last = rows - 1;
    if (last < visible) {
        first_ = 0;
    } else if (first_ + visible > last) {
        first_ = last - visible + 1;
    }
}

}  // namespace kvx
