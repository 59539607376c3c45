#pragma once
// What stands beside the table of figures: the histogram of one task or handler, the choice of what
// it shows, and its deadline.

#include <QComboBox>
#include <QLineEdit>

#include "workbench/desktop/timing/Histogram.h"
#include "workbench/desktop/timing/TimingRun.h"
#include "workbench/timing/Explanation.h"

namespace kvx::desktop {

class ContextFigures final : public QObject {
  public:
    ContextFigures();

    // Both are given away to whoever lays them out.
    QWidget& Choice() { return *choice_; }
    QWidget& Picture() { return *histogram_; }

    // A bar was clicked: its first job.
    std::function<void(const timing::JobRef& job)> onJob;
    // A deadline was typed and is none: why.
    std::function<void(const QString& message)> onFault;
    std::function<void(const std::string& deadline)> onDeadline;

    void Show(std::shared_ptr<const TimingFacts> facts, timing::ContextId context);
    void Clear();
    // Only while one is shown.
    timing::ContextId Context() const { return context_; }

  private:
    void EachValue(const std::function<bool(std::size_t index, std::int64_t value)>& visit) const;
    void Draw();
    void TakeDeadline();
    void BinClicked(std::int64_t from, std::int64_t to);

    QWidget* choice_;
    QLineEdit* deadline_;
    QComboBox* figure_;
    Histogram* histogram_;
    std::shared_ptr<const TimingFacts> facts_;  // null: nothing is shown
    timing::ContextId context_ = timing::kNobody;
};

}  // namespace kvx::desktop
