#pragma once
// An analysis as the toolkit's tables want it.

#include <QAbstractTableModel>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

#include "workbench/desktop/timing/RowPicker.h"

namespace kvx::desktop {

class TableModel final : public QAbstractTableModel {
  public:
    // form: of the analyses that it will be given.
    explicit TableModel(const AnalysisForm& form);

    // Shows another one, sorted and filtered as before; null: none. Its rows do not change.
    void Show(std::shared_ptr<const Analysis> analysis);
    const Analysis* Shown() const { return analysis_.get(); }
    void Filter(const QString& text);
    // The row of the analysis that stands in a row of the table.
    int RowOf(const QModelIndex& index) const;
    // Where the row of the analysis stands; none: it is filtered out, or not there yet.
    QModelIndex Find(int row) const;
    // Of the row places with the titles, with tabs between cells, as spreadsheets take it.
    QString Texts(const std::vector<int>& places) const;

    // After rows came, went or changed places.
    std::function<void()> onRows;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

  private:
    void Continue();
    bool IsNumber(int column) const;

    const AnalysisForm& form_;
    std::shared_ptr<const Analysis> analysis_;
    RowPicker picker_;
    std::vector<int> rows_;  // as the table shows them
    std::optional<std::pair<int, bool>> sortedBy_;
    QTimer later_;
};

}  // namespace kvx::desktop
