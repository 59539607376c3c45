#include "workbench/desktop/timing/ContextFigures.h"

#include <QHBoxLayout>

#include "workbench/desktop/QtText.h"
#include "workbench/service/TimeArgument.h"
#include "workbench/timing/Times.h"

namespace kvx::desktop {
namespace {

struct Figure {
    const char* name;
    std::optional<std::int64_t> (*of)(const timing::Job&);
};
constexpr Figure kFigures[] = {
    {"Response time", [](const timing::Job& job) { return job.Response(); }},
    {"Core execution time", [](const timing::Job& job) { return job.cet; }},
    {"Initial pending time", [](const timing::Job& job) { return job.Pending(); }},
    {"Period", [](const timing::Job& job) { return job.period; }},
};
constexpr int kResponse = 0;  // what a deadline is about
constexpr int kDeadlineWidth = 140;

}  // namespace

ContextFigures::ContextFigures()
    : choice_(new QWidget),
      deadline_(new QLineEdit),
      figure_(new QComboBox),
      histogram_(new Histogram) {
    for (const Figure& figure : kFigures) figure_->addItem(figure.name);
    deadline_->setPlaceholderText("Deadline, as 5ms");
    deadline_->setToolTip("Deadline of the selected row. File > Save Rules As keeps it.");
    deadline_->setMaximumWidth(kDeadlineWidth);
    auto* row = new QHBoxLayout(choice_);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(deadline_);
    row->addWidget(figure_);
    connect(deadline_, &QLineEdit::returnPressed, this, [this] { TakeDeadline(); });
    connect(figure_, &QComboBox::currentIndexChanged, this, [this] { Draw(); });
    histogram_->onBin = [this](std::int64_t from, std::int64_t to) { BinClicked(from, to); };
    Clear();
}

void ContextFigures::Clear() {
    histogram_->Clear();
    facts_.reset();
    deadline_->clear();
    deadline_->setEnabled(false);
}

void ContextFigures::Show(std::shared_ptr<const TimingFacts> facts, timing::ContextId context) {
    facts_ = std::move(facts);
    context_ = context;
    const auto& clock = facts_->decoded->GetRecording().Clock();
    const auto deadline = facts_->rules.DeadlineOf(context_);
    deadline_->setEnabled(true);
    deadline_->setText(deadline ? FromUtf8(timing::ExactTimeText(*deadline, clock)) : QString());
    Draw();
}

// What the complete jobs of the tables' range show, until visit answers false.
void ContextFigures::EachValue(
    const std::function<bool(std::size_t index, std::int64_t value)>& visit) const {
    const timing::Selection selection = facts_->Input().selection;
    const Figure& figure = kFigures[figure_->currentIndex()];
    for (std::size_t i = 0; i < facts_->model->AllJobs().CountOf(context_); ++i) {
        const auto job = facts_->model->JobIn(selection, context_, i);
        const auto value = job && !job->cut ? figure.of(*job) : std::nullopt;
        if (value && !visit(i, *value)) return;
    }
}

void ContextFigures::Draw() {
    if (!facts_) return;
    std::vector<std::int64_t> values;
    EachValue([&values](std::size_t, std::int64_t value) {
        values.push_back(value);
        return true;
    });
    const bool hasDeadline = figure_->currentIndex() == kResponse;
    histogram_->Show(std::move(values),
                     hasDeadline ? facts_->rules.DeadlineOf(context_) : std::nullopt,
                     facts_->decoded->GetRecording().Clock(),
                     FromUtf8(facts_->model->AllContexts().NameOf(context_)) + ", " +
                         figure_->currentText().toLower());
}

void ContextFigures::TakeDeadline() {
    const std::string text = deadline_->text().trimmed().toStdString();
    const auto time = service::ParseTime(text, facts_->decoded->GetRecording().Clock());
    if (time && *time > 0) return onDeadline(text);
    onFault(time ? QStringLiteral("A deadline is longer than nothing.")
                 : FromUtf8(time.GetError().message));
}

void ContextFigures::BinClicked(std::int64_t from, std::int64_t to) {
    EachValue([&](std::size_t index, std::int64_t value) {
        if (value < from || value >= to) return true;
        onJob({context_, index});
        return false;
    });
}

}  // namespace kvx::desktop
