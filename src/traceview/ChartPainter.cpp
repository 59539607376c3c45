#include "traceview/ChartPainter.h"

#include <algorithm>
#include <array>
#include <variant>

#include "host/TraceCodes.h"
#include "platform/base/SystemInfo.h"

namespace kvx::chart {
namespace {

constexpr COLORREF kBlack = RGB(0, 0, 0);

// A band of half the given fraction of a line's height around the centre of a line.
RECT Band(const ChartGeometry& geometry, const Bar& bar, int fraction) {
    const int y = geometry.LineCentre(bar.line);
    const int half = geometry.lineHeight / fraction;
    return {bar.x1, y - half, bar.x2, y + half};
}

RECT ChartRow(const ChartGeometry& geometry, int row) {
    const int h = geometry.lineHeight;
    return {geometry.left, (row + 1) * h, geometry.right, (row + 2) * h};
}

void DrawVertical(CDC& dc, int x, int top, int bottom) {
    dc.MoveTo(x, top);
    dc.LineTo(x, bottom);
}

}  // namespace

void DrawTable(CDC& dc, CHeaderCellPainter& painter, const TraceColumns& columns,
               const ChartGeometry& geometry, const CContextMng& contexts,
               const LineSelection& selection, COLORREF sysCallBack) {
    const int h = geometry.lineHeight;
    for (int row = 0; row <= geometry.visibleLines; ++row) {
        const int line = geometry.firstLine + row;
        const bool exists = line < contexts.GetCount();
        const ContextTexts texts = exists ? contexts.GetTexts(line) : ContextTexts{};
        const std::array<const CString*, TraceColumns::kChart> cells = {&texts.vector, &texts.table,
                                                                        &texts.id, &texts.name};
        const bool selected = exists && selection.Contains(contexts.GetKey(line));
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const TraceColumns::Column& column = columns[i];
            const RECT cell = {column.left, (row + 1) * h, column.right, (row + 2) * h};
            if (!column.visible || cell.IsRectEmpty()) continue;
            painter.Draw(dc, cell, *cells[i], false, CellAlign::Left);
            if (selected) dc.PatBlt(cell.left, cell.top, cell.Width(), cell.Height(), DSTINVERT);
        }
        if (exists && contexts.IsSysCallProcess(line)) {
            dc.FillSolidRect(ChartRow(geometry, row), sysCallBack);
        }
    }
}

void DrawDropMark(CDC& dc, const ChartGeometry& geometry, int tableLeft, int dropLine) {
    const int row = std::min(dropLine, geometry.lineCount) - geometry.firstLine;
    if (dropLine < 0 || row < 0 || row > geometry.visibleLines) return;
    CPen pen(PS_SOLID, 3, kBlack);
    CPen* const previous = dc.SelectObject(&pen);
    dc.MoveTo(tableLeft, (row + 1) * geometry.lineHeight);
    dc.LineTo(geometry.right, (row + 1) * geometry.lineHeight);
    dc.SelectObject(previous);
}

namespace {

// Draws one item after the other.
class ItemPainter {
  public:
    ItemPainter(CDC& dc, const ChartGeometry& geometry, const COSColor& colors, COSTip& tips)
        : dc_(dc),
          geometry_(geometry),
          colors_(colors),
          tips_(tips),
          dotted_(PS_DOT, 1, colors[EColor::Run]),
          solid_(PS_SOLID, 1, colors[EColor::Run]),
          dashed_(PS_DASH, 1, colors[EColor::Run]),
          runSolid_(colors[EColor::Run]),
          runHatched_(HS_DIAGCROSS, colors[EColor::Run]),
          free_(geometry.left),
          previousPen_(dc.SelectObject(&solid_)),
          previousBrush_(dc.SelectObject(&runSolid_)) {
        for (int cls = 0; cls <= host::kCallClasses; ++cls)
            calls_[static_cast<std::size_t>(cls)].CreateSolidBrush(colors.GetSysCallColor(cls));
    }
    ItemPainter(const ItemPainter&) = delete;
    ItemPainter& operator=(const ItemPainter&) = delete;
    ~ItemPainter() {
        dc_.SelectObject(previousBrush_);
        dc_.SelectObject(previousPen_);
    }

    void operator()(const RowLine& line) {
        dc_.SelectObject(&dotted_);
        dc_.MoveTo(geometry_.left, geometry_.RowCentre(line.row));
        dc_.LineTo(geometry_.right, geometry_.RowCentre(line.row));
    }

    void operator()(const GridLine& line) {
        dc_.SelectObject(&dotted_);
        DrawVertical(dc_, line.x, geometry_.lineHeight, geometry_.LinesBottom());
        if (line.x < free_) return;
        const CString number = std::to_string(line.number);
        const int mode = dc_.SetBkMode(TRANSPARENT);
        dc_.TextOut(line.x, 0, number);
        dc_.SetBkMode(mode);
        free_ = line.x + dc_.GetTextExtent(number).cx + geometry_.charWidth / 2;
    }

    void operator()(const StateBar& bar) {
        const RECT band = Band(geometry_, bar, 6);
        dc_.FillSolidRect(band, colors_.GetTaskStateColor(bar.state));
        tips_.AddTipRect(band, bar.event);
        if (bar.suspended) dc_.FillSolidRect(Band(geometry_, bar, 7), colors_[EColor::Sus]);
        if (bar.paused) dc_.FillSolidRect(Band(geometry_, bar, 8), colors_[EColor::Pause]);
    }

    void operator()(const SwitchLine& line) {
        dc_.SelectObject(line.dashed ? &dashed_ : &solid_);
        DrawVertical(dc_, line.x, line.y1, line.y2);
    }

    void operator()(const RunBar& bar) {
        const RECT band = Band(geometry_, bar, 4);
        dc_.FillRect(band, bar.hatched ? &runHatched_ : &runSolid_);
        tips_.AddTipRect(band, bar.event);
    }

    void operator()(const Mark& mark) {
        const int y = geometry_.LineCentre(mark.line);
        const int h = geometry_.lineHeight;
        const RECT rect = {mark.x - geometry_.charWidth / 2, y - h / 3,
                           mark.x + geometry_.charWidth / 2, y + h / 3};
        const bool known = mark.cls > 0 && mark.cls <= host::kCallClasses;
        dc_.SelectObject(&solid_);
        dc_.SelectObject(&calls_[known ? static_cast<std::size_t>(mark.cls) : 0]);
        dc_.RoundRect(rect.left, rect.top, rect.right, rect.bottom, h, h);
        tips_.AddTipRect(rect, mark.event);
    }

    void operator()(const HiddenRow& hidden) {
        const RECT row = ChartRow(geometry_, hidden.row);
        dc_.FillSolidRect(row, GetSysColor(COLOR_WINDOW));
        tips_.RemoveTipRects(row);
    }

    void operator()(const MarkerLine& line) {
        constexpr std::array<EColor, 3> kColors = {EColor::MarkerS, EColor::MarkerE,
                                                   EColor::Indicator};
        CPen pen(PS_SOLID, 1, colors_[kColors[static_cast<std::size_t>(line.which)]]);
        dc_.SelectObject(&pen);
        DrawVertical(dc_, line.x, geometry_.lineHeight, geometry_.LinesBottom());
        dc_.SelectObject(&solid_);
    }

  private:
    CDC& dc_;
    const ChartGeometry& geometry_;
    const COSColor& colors_;
    COSTip& tips_;
    CPen dotted_;
    CPen solid_;
    CPen dashed_;
    CBrush runSolid_;
    CBrush runHatched_;
    std::array<CBrush, host::kCallClasses + 1> calls_;  // by class
    int free_;  // where the next number of the grid may begin
    CPen* previousPen_;
    CBrush* previousBrush_;
};

}  // namespace

void DrawItems(CDC& dc, const ChartGeometry& geometry, const ChartItems& items,
               const COSColor& colors, COSTip& tips, const BeforeItem& beforeItem) {
    ItemPainter painter(dc, geometry, colors, tips);
    for (const ChartItem& item : items) {
        if (beforeItem) beforeItem(item);
        std::visit(painter, item);
    }
}

}  // namespace kvx::chart
