#include "workbench/desktop/timing/TableModel.h"

#include <algorithm>

#include "platform/base/Text.h"
#include "workbench/desktop/QtText.h"

namespace kvx::desktop {
namespace {

constexpr std::chrono::milliseconds kPiece{30};

}  // namespace

TableModel::TableModel(const AnalysisForm& form) : form_(form) {
    connect(&later_, &QTimer::timeout, this, [this] { Continue(); });
}

void TableModel::Show(std::shared_ptr<const Analysis> analysis) {
    beginResetModel();
    analysis_ = std::move(analysis);
    rows_.clear();
    picker_.SetAnalysis(analysis_.get());
    if (sortedBy_) picker_.SortBy(sortedBy_->first, sortedBy_->second);
    endResetModel();
    Continue();
}

void TableModel::Filter(const QString& text) {
    picker_.Filter(text);
    Continue();
}

void TableModel::sort(int column, Qt::SortOrder order) {
    if (column < 0 || column >= columnCount()) return;
    sortedBy_ = {column, order == Qt::AscendingOrder};
    picker_.SortBy(column, sortedBy_->second);
    Continue();
}

// What takes longer goes on from the event loop.
void TableModel::Continue() {
    if (!picker_.Continue(kPiece)) return later_.start(0);
    later_.stop();
    beginResetModel();
    rows_ = picker_.Rows();
    endResetModel();
    if (onRows) onRows();
}

int TableModel::RowOf(const QModelIndex& index) const {
    return rows_[static_cast<std::size_t>(index.row())];
}

QModelIndex TableModel::Find(int row) const {
    const auto at = std::ranges::find(rows_, row);
    return at == rows_.end() ? QModelIndex() : index(static_cast<int>(at - rows_.begin()), 0);
}

QString TableModel::Texts(const std::vector<int>& places) const {
    QStringList titles;
    for (const AnalysisColumn& column : form_.columns) titles << FromUtf8(column.title);
    QString text = titles.join('\t') + '\n';
    for (const int place : places) {
        QStringList cells;
        for (int c = 0; c < columnCount(); ++c)
            cells << data(index(place, c), Qt::DisplayRole).toString();
        text += cells.join('\t') + '\n';
    }
    return text;
}

bool TableModel::IsNumber(int column) const {
    return form_.columns[static_cast<std::size_t>(column)].kind != ValueKind::Text;
}

int TableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int TableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(form_.columns.size());
}

QVariant TableModel::data(const QModelIndex& index, int role) const {
    if (role == Qt::TextAlignmentRole)
        return QVariant((IsNumber(index.column()) ? Qt::AlignRight : Qt::AlignLeft) |
                        Qt::AlignVCenter);
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
    return FromUtf8(std::string(TrimLeft(analysis_->Cell(RowOf(index), index.column()))));
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant((IsNumber(section) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    if (role == Qt::DisplayRole)
        return FromUtf8(form_.columns[static_cast<std::size_t>(section)].title);
    return {};
}

}  // namespace kvx::desktop
