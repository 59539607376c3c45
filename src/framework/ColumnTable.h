#pragma once
// The columns of a table, side by side from x = 0.

#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "framework/HeaderCellPainter.h"

class CColumnTable {
  public:
    struct Column {
        const char* title;
        int characters;                     // width in characters, as it is stored
        CellAlign align = CellAlign::Left;  // of the cells below the title
        bool visible = true;
        int left = 0;  // edges and width in pixels
        int right = 0;
        int width = 0;
    };
    // An edge may not come closer to the column's left one.
    static constexpr int kLeastWidth = 3;
    // How far from an edge a press takes hold of it; strictly less than that.
    static constexpr int kGrip = 2;

    explicit CColumnTable(std::vector<Column> columns) : columns_(std::move(columns)) {}

    std::size_t Count() const { return columns_.size(); }
    const Column& operator[](std::size_t which) const { return columns_[which]; }
    auto begin() const { return columns_.begin(); }
    auto end() const { return columns_.end(); }
    // Of the visible columns together.
    int TotalWidth() const;

    // Widths in pixels from those in characters.
    void SetCharWidth(int charWidth);
    // Edges from left to right. A hidden column keeps its old ones.
    void LayOut();
    // The column whose right edge is under x; of several the last, so that one without a width can
    // be drawn open again.
    std::optional<std::size_t> EdgeAt(int x) const { return EdgeAmong(Count(), x); }
    // The column whose title is under x, out of reach of both edges.
    std::optional<std::size_t> TitleAt(int x) const;
    // Gives the column its right edge, and the width that follows, also in whole characters.
    void SetRightEdge(std::size_t which, int x, int charWidth);

    // Widths in characters, one a column.
    std::vector<int> Characters() const;
    void SetCharacters(std::span<const int> characters);

  protected:
    Column& At(std::size_t which) { return columns_[which]; }
    // As EdgeAt, among the first columns alone.
    std::optional<std::size_t> EdgeAmong(std::size_t count, int x) const;

  private:
    std::vector<Column> columns_;
};

// A raised cell with the title for every visible column that has a width.
void DrawTitles(CDC& dc, CHeaderCellPainter& painter, const CColumnTable& columns, int height);
