#include "framework/ColumnTable.h"

#include <algorithm>
#include <cstdint>

namespace {

constexpr int kWidest = 1 << 20;  // pixels; stored widths may be any number

}  // namespace

int CColumnTable::TotalWidth() const {
    int total = 0;
    for (const Column& column : columns_) total += column.visible ? column.width : 0;
    return total;
}

void CColumnTable::SetCharWidth(int charWidth) {
    for (Column& column : columns_) {
        const std::int64_t width = std::int64_t{column.characters} * charWidth;
        column.width = static_cast<int>(std::clamp<std::int64_t>(width, 0, kWidest));
    }
}

void CColumnTable::LayOut() {
    int x = 0;
    for (Column& column : columns_) {
        if (!column.visible) continue;
        column.left = x;
        column.right = x += column.width;
    }
}

std::optional<std::size_t> CColumnTable::EdgeAmong(std::size_t count, int x) const {
    for (std::size_t i = count; i-- > 0;) {
        const int edge = columns_[i].right;
        if (columns_[i].visible && edge - kGrip < x && x < edge + kGrip) return i;
    }
    return std::nullopt;
}

std::optional<std::size_t> CColumnTable::TitleAt(int x) const {
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const Column& column = columns_[i];
        if (column.visible && column.left + kGrip < x && x < column.right - kGrip) return i;
    }
    return std::nullopt;
}

void CColumnTable::SetRightEdge(std::size_t which, int x, int charWidth) {
    Column& column = columns_[which];
    column.right = x;
    column.width = x - column.left;
    if (charWidth > 0) column.characters = column.width / charWidth;
}

std::vector<int> CColumnTable::Characters() const {
    std::vector<int> characters;
    for (const Column& column : columns_) characters.push_back(column.characters);
    return characters;
}

void CColumnTable::SetCharacters(std::span<const int> characters) {
    for (std::size_t i = 0; i < columns_.size(); ++i) columns_[i].characters = characters[i];
}

void DrawTitles(CDC& dc, CHeaderCellPainter& painter, const CColumnTable& columns, int height) {
    for (const CColumnTable::Column& column : columns) {
        const RECT cell = {column.left, 0, column.right, height};
        if (!column.visible || cell.IsRectEmpty()) continue;
        painter.Draw(dc, cell, column.title, false, CellAlign::Left);
    }
}
