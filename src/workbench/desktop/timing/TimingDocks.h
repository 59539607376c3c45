#pragma once
// The docks that say what a recording means: findings, figures of jobs, and why a job took as long
// as it did. They are filled from a thread of their own, and follow the recording that is shown.

#include <QMainWindow>
#include <QMenu>

#include "workbench/desktop/timing/ContextFigures.h"
#include "workbench/desktop/timing/ExplanationPane.h"
#include "workbench/desktop/timing/FindingsTable.h"
#include "workbench/desktop/timing/Overview.h"
#include "workbench/desktop/timing/TableDock.h"

namespace kvx::desktop {

// A stretch of a recording that somebody is sent to; counts.
struct Stretch {
    std::optional<std::uint32_t> processor;  // none: the one that is shown
    std::int64_t start = 0;
    std::int64_t end = 0;
    std::int64_t at = 0;  // of the event that is meant
};

class TimingDocks final : public QObject {
  public:
    // The docks belong to the window, hidden until a stored layout or the user shows them; their
    // menu items go into the menu.
    TimingDocks(QMainWindow& window, QMenu& menu);
    // Waits for threads that are still at work.
    ~TimingDocks() override;

    // What a row speaks of was selected.
    std::function<void(const Stretch& stretch)> onGoTo;
    // The rules, or a deadline that was typed, cannot be taken.
    std::function<void(const QString& message)> onRulesFault;
    // What lies between the markers now; none: nothing, which the user has been told.
    std::function<std::optional<timing::Span>()> marked;
    // After the docks were filled.
    std::function<void()> onFilled;

    // Null: there is none. processor: the one that is shown.
    void SetRecording(std::shared_ptr<const service::DecodedRecording> decoded,
                      std::uint32_t processor);
    // Text of a rules file and its path; empty: none. Everything is worked out anew.
    void SetRules(const std::string& text, const std::string& path);
    // As they were given, with the deadlines that the user has typed since.
    const std::string& RulesText() const { return rules_; }
    // Limits the tables to the jobs in what is marked now, or takes them back to the whole.
    void LimitToMarked(bool limit);
    // Shows findings and explanation, for the first look at a recording that has some.
    void ShowFindings();
    // Gives the docks their places, below that window, unless a layout that was restored has them
    // elsewhere. They are on no screen before.
    void Place(QDockWidget& above);
    // Takes the docks off the screen, and brings those back that were on it, where there is no
    // recording meanwhile.
    void PutAway();
    void BringBack();
    const TimingFacts* Facts() const { return facts_.get(); }
    Overview& Strip() { return *overview_; }
    TableDock& Findings() { return *findings_; }
    ExplanationPane& Explanation() { return *explanation_; }
    TableDock& Table(const char* name) const;

  private:
    struct TableOf {
        const AnalysisForm* form;
        TableDock* dock;
    };

    void Add(QDockWidget& dock, QMenu& menu);
    TableDock* AddTable(const AnalysisForm& form, QMenu& menu);
    void PlaceFigures();
    void Fault(const QString& message);
    void Start();
    TimingRun::Done TakesFacts();
    void SayRange();
    void ShowOverview();
    void SelectAgain();
    void SayAll(const QString& text);
    void Take(std::shared_ptr<const TimingFacts> facts);
    void ShowFound();
    void FindingSelected(int row);
    void RowSelected(const AnalysisForm& form, int row, int column);
    void GoTo(const timing::JobRef& job);
    void TakeDeadline(const std::string& deadline);
    std::optional<timing::ContextId> ContextOf(const Analysis& table, int row) const;
    std::optional<timing::JobRef> JobOf(const AnalysisForm& form, int row, int column) const;

    QMainWindow& window_;
    QDockWidget* overviewDock_;
    Overview* overview_;
    TableDock* findings_;
    ExplanationPane* explanation_;
    std::vector<TableOf> tables_;
    std::vector<QDockWidget*> all_;
    std::vector<QDockWidget*> putAway_;
    bool arePlaced_ = false;
    ContextFigures figures_;
    std::string shownAgain_;  // name of the context to select when everything is worked out anew

    std::shared_ptr<const service::DecodedRecording> decoded_;
    std::uint32_t processor_ = 0;
    std::shared_ptr<const TimingFacts> facts_;  // null: there is nothing, or not yet
    std::string rules_;
    std::string rulesPath_;
    std::vector<std::unique_ptr<TimingRun>> runs_;  // the last one may be of use
    QAction* limit_;
};

}  // namespace kvx::desktop
