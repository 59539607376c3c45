#pragma once
// Which rows of an analysis a table shows, and in which order: sorted by a column, and those alone
// in which every typed word occurs. Worked out in pieces, so that a window stays alive over
// millions of rows.

#include <QString>
#include <QStringList>
#include <vector>

#include "analyze/model/Analysis.h"
#include "analyze/model/RowOrder.h"

namespace kvx::desktop {

class RowPicker {
  public:
    // Borrows the analysis, whose rows do not change. Null: no rows.
    void SetAnalysis(const Analysis* analysis);
    void SortBy(int column, bool ascending);
    // Rows have each of the words in some cell, whatever their case; empty: all rows.
    void Filter(const QString& text);

    // Something is asked for that Rows does not show yet.
    bool IsDue() const { return analysis_ && (order_.IsDue() || isPicking_); }
    // Goes on for so long; true when nothing is due any more and Rows is as asked for.
    bool Continue(std::chrono::milliseconds time);
    // As they were when nothing was due last.
    const std::vector<int>& Rows() const { return rows_; }

  private:
    bool Matches(int row) const;
    int RowAt(std::size_t place) const;

    const Analysis* analysis_ = nullptr;
    RowOrder order_;
    QStringList words_;
    std::vector<int> rows_;
    std::vector<int> picked_;  // by now
    std::size_t next_ = 0;     // place that is looked at next
    bool isPicking_ = false;
};

}  // namespace kvx::desktop
