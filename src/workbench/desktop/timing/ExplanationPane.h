#pragma once
// A dock that explains one job: a sentence, who started it, and what it did and what kept it, line
// by line. A click on a line shows its time.

#include <QDockWidget>
#include <QTextBrowser>
#include <functional>

#include "workbench/desktop/timing/TimingRun.h"
#include "workbench/timing/Explanation.h"
#include "workbench/timing/ExplanationLines.h"

namespace kvx::desktop {

class ExplanationPane final : public QDockWidget {
  public:
    explicit ExplanationPane(QWidget* parent);

    // A line was clicked: counts.
    std::function<void(std::int64_t start, std::int64_t end)> onTime;

    // The findings about the job stand below it.
    void Explain(const TimingFacts& facts, const timing::JobRef& job);
    // Something else in its place.
    void Say(const QString& text);
    QString Text() const { return browser_->toPlainText(); }

  private:
    QString LineRows() const;

    QTextBrowser* browser_;
    std::vector<timing::ExplanationLine> lines_;
};

}  // namespace kvx::desktop
