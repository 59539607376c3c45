#pragma once
// A dock with one table: what one types filters its rows, Ctrl+C copies the selected ones with the
// titles, and a menu saves the table as CSV.

#include <QBoxLayout>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QSplitter>
#include <QTableView>

#include "workbench/desktop/timing/TableModel.h"

namespace kvx::desktop {

class TableDock : public QDockWidget {
  public:
    // name: the dock's key in stored layouts.
    TableDock(const QString& name, const AnalysisForm& form, QWidget* parent);

    // Rows of the analysis.
    std::function<void(int row, int column)> onSelected;
    std::function<void(int row)> onOpened;  // a double click, or Enter

    void Show(std::shared_ptr<const Analysis> analysis);
    // Of what range the rows are; empty: of all.
    void SayRange(const QString& words) { range_->setText(words); }
    // Above the table, in place of it, while there is none.
    void Say(const QString& text);
    void SetFilter(const QString& text) { filter_->setText(text); }
    // Selects the row as a user would; nothing where it is filtered out.
    void Select(int row);
    const Analysis* Shown() const { return model_.Shown(); }
    QTableView& View() { return *view_; }
    // A choice beside the filter, and what it is about to the right of the table; both become the
    // dock's.
    void PutBeside(QWidget& choice, QWidget& picture);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Copy();
    void Save();
    void ShowMenu(const QPoint& at);
    void ShowCount();
    void Selected(const QModelIndex& index);
    void SetWidths(const AnalysisForm& form);
    void FitWidths();

    TableModel model_;
    QHBoxLayout* bar_;
    QSplitter* rows_;  // the table, and what stands beside it
    QLineEdit* filter_;
    QLabel* count_;
    QLabel* range_;
    QLabel* words_;
    QTableView* view_;
    // Of the columns. Those that the user has set stay.
    enum class Widths { ToFit, BeingFitted, Fitted, Users } widths_ = Widths::ToFit;
};

}  // namespace kvx::desktop
