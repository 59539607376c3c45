#include "workbench/desktop/timing/TimingDocks.h"

#include <algorithm>
#include <cstring>

#include "workbench/desktop/QtText.h"
#include "workbench/timing/RulesText.h"
#include "workbench/timing/TableForms.h"

namespace kvx::desktop {
namespace {

// What windows of the Workbench show of the tables' index.
constexpr const AnalysisForm* kShown[] = {&timing::kTimingForm, &timing::kJobsForm,
                                          &timing::kWaitsForm, &timing::kLocksForm};

const Value* Find(const Members& members, const char* key) {
    const auto at = std::ranges::find_if(
        members, [key](const Member& each) { return std::strcmp(each.first, key) == 0; });
    return at == members.end() ? nullptr : &at->second;
}

template <class Kind>
const Kind* ValueIn(const Members& members, const char* key) {
    const Value* const value = Find(members, key);
    return value ? std::get_if<Kind>(&value->data) : nullptr;
}

// Why there may be nothing, where the recording does not tell it.
QString WithNotes(const char* text, const std::vector<std::string>& notes) {
    QStringList lines{text};
    for (const std::string& note : notes) lines << FromUtf8(note);
    return lines.join("\n\n");
}

}  // namespace

TimingDocks::TimingDocks(QMainWindow& window, QMenu& menu)
    : window_(window),
      overviewDock_(new QDockWidget("Overview", &window)),
      overview_(new Overview(overviewDock_)),
      findings_(new TableDock("Findings", kFindingsForm, &window)),
      explanation_(new ExplanationPane(&window)) {
    overviewDock_->setObjectName("Overview");
    overviewDock_->setWidget(overview_);
    overviewDock_->setFocusProxy(overview_);
    Add(*overviewDock_, menu);
    Add(*findings_, menu);
    Add(*explanation_, menu);
    for (const AnalysisForm* const form : kShown) tables_.push_back({form, AddTable(*form, menu)});
    PlaceFigures();
    menu.addSeparator();
    limit_ =
        menu.addAction("Tables &Between Markers", this, [this](bool on) { LimitToMarked(on); });
    limit_->setCheckable(true);
    limit_->setEnabled(false);
    findings_->onSelected = [this](int row, int) { FindingSelected(row); };
    findings_->onOpened = [this](int) { explanation_->show(), explanation_->raise(); };
    explanation_->onTime = [this](std::int64_t start, std::int64_t end) {
        if (onGoTo) onGoTo({std::nullopt, start, end, start});
    };
    SayAll("There is no recording.");
}

TimingDocks::~TimingDocks() = default;

void TimingDocks::Add(QDockWidget& dock, QMenu& menu) {
    dock.hide();
    all_.push_back(&dock);
    menu.addAction(dock.toggleViewAction());
    dock.toggleViewAction()->setEnabled(false);
    connect(dock.toggleViewAction(), &QAction::triggered, &dock, [&dock](bool shown) {
        if (!shown) return;
        dock.raise();
        dock.setFocus();
    });
}

TableDock* TimingDocks::AddTable(const AnalysisForm& form, QMenu& menu) {
    auto* dock = new TableDock(FromUtf8(form.title), form, &window_);
    Add(*dock, menu);
    dock->onSelected = [this, &form](int row, int column) { RowSelected(form, row, column); };
    dock->onOpened = [this](int) { explanation_->show(), explanation_->raise(); };
    return dock;
}

TableDock& TimingDocks::Table(const char* name) const {
    const auto at = std::ranges::find_if(
        tables_, [name](const TableOf& each) { return std::strcmp(each.form->name, name) == 0; });
    return *at->dock;
}

// Beside the table of the figures that they are about.
void TimingDocks::PlaceFigures() {
    Table("timing").PutBeside(figures_.Choice(), figures_.Picture());
    figures_.onJob = [this](const timing::JobRef& job) {
        TableDock& table = Table("jobs");
        table.SetFilter(FromUtf8(facts_->model->AllContexts().NameOf(job.context)));
        table.show();
        table.raise();
        GoTo(job);
    };
    figures_.onFault = [this](const QString& message) { Fault(message); };
    figures_.onDeadline = [this](const std::string& deadline) { TakeDeadline(deadline); };
}

void TimingDocks::Fault(const QString& message) {
    if (onRulesFault) onRulesFault(message);
}

// The strip under the chart, shown until somebody hides it; findings and tables in one place below,
// the explanation beside them.
void TimingDocks::Place(QDockWidget& above) {
    if (std::exchange(arePlaced_, true)) return;
    for (QDockWidget* const dock : all_) {
        dock->toggleViewAction()->setEnabled(true);
        // A layout that was restored before has put them where they stand.
        const bool stands = window_.dockWidgetArea(dock) != Qt::NoDockWidgetArea;
        if (stands || window_.restoreDockWidget(dock)) continue;
        if (dock == overviewDock_) {
            window_.splitDockWidget(&above, dock, Qt::Vertical);
            dock->show();
            continue;
        }
        if (dock == findings_)
            window_.splitDockWidget(overviewDock_, dock, Qt::Vertical);
        else if (dock == explanation_)
            window_.splitDockWidget(findings_, dock, Qt::Horizontal);
        else
            window_.tabifyDockWidget(findings_, dock);
        dock->hide();
    }
}

void TimingDocks::PutAway() {
    for (QDockWidget* const dock : all_) {
        if (dock->isHidden()) continue;
        dock->hide();
        putAway_.push_back(dock);
    }
}

void TimingDocks::BringBack() {
    for (QDockWidget* const dock : std::exchange(putAway_, {})) dock->show();
}

void TimingDocks::SetRecording(std::shared_ptr<const service::DecodedRecording> decoded,
                               std::uint32_t processor) {
    const bool isOther = decoded != decoded_;
    if (!isOther && processor == processor_) return;
    decoded_ = std::move(decoded);
    processor_ = processor;
    if (isOther) Start();
    ShowOverview();
}

void TimingDocks::ShowOverview() {
    std::size_t timeline = 0;
    if (decoded_) {
        const auto& timelines = decoded_->Timelines();
        const auto at = std::ranges::find_if(
            timelines, [this](const auto& each) { return each->processor == processor_; });
        if (at != timelines.end()) timeline = static_cast<std::size_t>(at - timelines.begin());
    }
    overview_->SetRecording(decoded_, timeline);
    if (!facts_) return;
    std::vector<std::int64_t> times;
    for (const auto* list : {&facts_->found.violations, &facts_->found.findings})
        for (const timing::Finding& finding : *list)
            if (finding.severity != timing::Severity::Note &&
                finding.timeline.value_or(timeline) == timeline)
                times.push_back(finding.start);
    overview_->SetFindings(std::move(times));
}

void TimingDocks::SetRules(const std::string& text, const std::string& path) {
    rules_ = text;
    rulesPath_ = path;
    Start();
}

void TimingDocks::Start() {
    for (const auto& run : runs_) run->Abandon();
    std::erase_if(runs_, [](const auto& run) { return run->IsOver(); });
    SayAll(decoded_ ? "Being worked out…" : "There is no recording.");
    figures_.Clear();
    facts_.reset();
    limit_->setChecked(false);
    limit_->setEnabled(false);
    if (!decoded_) return;
    runs_.push_back(std::make_unique<TimingRun>(decoded_, rules_, rulesPath_, *this, TakesFacts()));
}

TimingRun::Done TimingDocks::TakesFacts() {
    return [this](std::shared_ptr<const TimingFacts> facts) { Take(std::move(facts)); };
}

void TimingDocks::LimitToMarked(bool limit) {
    if (!facts_) return;
    const auto range = limit && marked ? marked() : std::nullopt;
    limit_->setChecked(range.has_value());
    if (limit && !range) return;
    for (const auto& run : runs_) run->Abandon();
    std::erase_if(runs_, [](const auto& run) { return run->IsOver(); });
    figures_.Clear();
    runs_.push_back(std::make_unique<TimingRun>(facts_, range, *this, TakesFacts()));
}

// Beside the number of rows.
void TimingDocks::SayRange() {
    QString words;
    if (facts_->range) {
        const auto& clock = decoded_->GetRecording().Clock();
        words = QStringLiteral("from %1 to %2")
                    .arg(FromUtf8(clock.Format(facts_->range->start)),
                         FromUtf8(clock.Format(facts_->range->end)));
    }
    for (const TableOf& table : tables_) table.dock->SayRange(words);
}

void TimingDocks::SayAll(const QString& text) {
    findings_->Say(text);
    for (const TableOf& table : tables_) table.dock->Say(text);
    explanation_->Say(decoded_ ? "Select a row of a table." : text);
}

void TimingDocks::Take(std::shared_ptr<const TimingFacts> facts) {
    const bool onlyTables = facts_ && facts_->model == facts->model;
    facts_ = std::move(facts);
    if (!onlyTables) ShowFound();
    const auto index = timing::Tables();
    for (std::size_t i = 0; i < index.size(); ++i) {
        const auto at = std::ranges::find(tables_, index[i].form, &TableOf::form);
        if (at == tables_.end()) continue;
        const Analysis* const table = facts_->tables[i].get();
        // The table borrows from the facts, which the pointer keeps with it.
        if (table->RowCount() > 0)
            at->dock->Show(std::shared_ptr<const Analysis>(facts_, table));
        else
            at->dock->Say(WithNotes("There is nothing to show.", facts_->model->Notes()));
    }
    SayRange();
    SelectAgain();
    if (!onlyTables && onFilled) onFilled();
}

void TimingDocks::ShowFound() {
    limit_->setEnabled(true);
    if (!facts_->failure.empty()) Fault(FromUtf8(facts_->failure));
    if (facts_->found.violations.empty() && facts_->found.findings.empty())
        findings_->Say(WithNotes("Nothing was found.", facts_->found.notes));
    else
        findings_->Show(std::make_shared<FindingsTable>(facts_));
    ShowOverview();
}

void TimingDocks::SelectAgain() {
    const std::string name = std::exchange(shownAgain_, {});
    TableDock& table = Table("timing");
    if (name.empty() || !table.Shown()) return;
    for (int row = 0; row < table.Shown()->RowCount(); ++row) {
        const auto context = ContextOf(*table.Shown(), row);
        if (context && facts_->model->AllContexts().NameOf(*context) == name)
            return table.Select(row);
    }
}

void TimingDocks::ShowFindings() {
    if (!facts_ || !findings_->Shown()) return;
    explanation_->show();
    findings_->show();
    findings_->raise();
    // What was found is read beside the chart, which keeps the greater part.
    window_.resizeDocks({findings_, explanation_}, {3, 2}, Qt::Horizontal);
    findings_->Select(0);
}

void TimingDocks::FindingSelected(int row) {
    if (!facts_) return;
    const auto& finding = static_cast<const FindingsTable*>(findings_->Shown())->FindingOf(row);
    std::optional<timing::JobRef> job;
    if (finding.job > 0 && !finding.contexts.empty())
        job = {finding.contexts.front(), std::size_t{finding.job} - 1};
    if (job)
        explanation_->Explain(*facts_, *job);
    else
        explanation_->Say(FromUtf8(finding.sentence));
    std::optional<std::uint32_t> processor;
    if (finding.timeline) processor = facts_->model->ProcessorOf(*finding.timeline);
    if (onGoTo) onGoTo({processor, finding.start, finding.end, finding.start});
}

// Of a name that stands for several the one with the row's number.
std::optional<timing::ContextId> TimingDocks::ContextOf(const Analysis& table, int row) const {
    const Members values = table.Values(row);
    const auto* const name = ValueIn<std::string>(values, "task");
    const auto* const number = ValueIn<std::int64_t>(values, "number");
    if (!name) return std::nullopt;
    for (timing::ContextId id = 0; id < facts_->model->AllContexts().Count(); ++id) {
        const bool same = facts_->model->AllContexts().NameOf(id) == *name;
        if (same && (!number || facts_->model->AllContexts().Get(id).number == *number)) return id;
    }
    return std::nullopt;
}

// The job that a cell speaks of: the row's own, the longest of its context, or the one in which its
// event lies.
std::optional<timing::JobRef> TimingDocks::JobOf(const AnalysisForm& form, int row,
                                                 int column) const {
    const auto& table = static_cast<const timing::Table&>(*Table(form.name).Shown());
    const auto context = ContextOf(table, row);
    if (&form == &timing::kJobsForm) {
        const Members values = table.Values(row);
        const auto* const job = ValueIn<std::int64_t>(values, "job");
        if (context && job) return timing::JobRef{*context, static_cast<std::size_t>(*job - 1)};
    }
    if (const auto place = table.PlaceOf(row, column)) {
        const auto& events = facts_->decoded->Timelines()[place->timeline]->events;
        std::vector<timing::ContextId> among;
        if (context) among.push_back(*context);
        const auto job =
            timing::JobAt(*facts_->model, events.Time(place->event), std::nullopt, among);
        if (job) return job;
    }
    if (!context) return std::nullopt;
    const auto worst = timing::WorstJobs(*facts_->model, {*context}, std::nullopt, 1);
    return worst.empty() ? std::nullopt : std::optional(worst.front());
}

void TimingDocks::RowSelected(const AnalysisForm& form, int row, int column) {
    if (!facts_) return;
    const Analysis& table = *Table(form.name).Shown();
    if (&form == &timing::kTimingForm) {
        if (const auto context = ContextOf(table, row)) figures_.Show(facts_, *context);
    }
    if (const auto job = JobOf(form, row, column))
        GoTo(*job);
    else
        explanation_->Say("The row speaks of no job.");
}

void TimingDocks::GoTo(const timing::JobRef& ref) {
    explanation_->Explain(*facts_, ref);
    const timing::Job job = facts_->model->AllJobs().At(ref.context, ref.index);
    if (!onGoTo) return;
    onGoTo(
        {facts_->model->ProcessorOf(job.timeline), job.seen.start, job.seen.end, job.seen.start});
}

// The rules with it are worked out anew; the row is selected again then.
void TimingDocks::TakeDeadline(const std::string& deadline) {
    const timing::ContextId context = figures_.Context();
    const timing::ContextInfo& info = facts_->model->AllContexts().Get(context);
    shownAgain_ = facts_->model->AllContexts().NameOf(context);
    SetRules(timing::WithDeadline(rules_, info.IsHandler(), info.name, deadline), rulesPath_);
}

}  // namespace kvx::desktop
