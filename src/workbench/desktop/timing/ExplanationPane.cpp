#include "workbench/desktop/timing/ExplanationPane.h"

#include "workbench/desktop/QtText.h"
#include "workbench/timing/Sentence.h"

namespace kvx::desktop {
namespace {

QString Escaped(const std::string& text) {
    return FromUtf8(text).toHtmlEscaped();
}

QString FindingTexts(const TimingFacts& facts, const timing::Explanation& explanation) {
    QString text;
    for (const auto* list : {&facts.found.violations, &facts.found.findings}) {
        for (const timing::Finding& finding : *list) {
            const bool of =
                !finding.contexts.empty() && finding.contexts.front() == explanation.context;
            if (of && finding.job == explanation.job.number)
                text += "<li>" + Escaped(finding.sentence) + "</li>";
        }
    }
    return text.isEmpty() ? text : "<p><b>Findings</b></p><ul>" + text + "</ul>";
}

}  // namespace

ExplanationPane::ExplanationPane(QWidget* parent)
    : QDockWidget("Explanation", parent), browser_(new QTextBrowser) {
    setObjectName("Explanation");
    browser_->setOpenLinks(false);
    setWidget(browser_);
    setFocusProxy(browser_);
    connect(browser_, &QTextBrowser::anchorClicked, this, [this](const QUrl& url) {
        const auto line = url.toString().mid(1).toUInt();
        if (line < lines_.size() && onTime) onTime(lines_[line].start, lines_[line].end);
    });
}

void ExplanationPane::Say(const QString& text) {
    lines_.clear();
    browser_->setHtml("<p>" + text.toHtmlEscaped() + "</p>");
}

void ExplanationPane::Explain(const TimingFacts& facts, const timing::JobRef& ref) {
    const timing::Model& model = *facts.model;
    const timing::Explanation explanation = timing::Explain(model, ref.context, ref.index);
    lines_ = timing::LinesOf(model, explanation);
    const auto deadline = facts.rules.DeadlineOf(ref.context);
    QString text = "<p>" + Escaped(timing::SentenceOf(model, explanation, deadline)) + "</p>";
    const std::string starter = timing::StarterSentence(model, explanation.job);
    if (!starter.empty()) text += "<p>" + Escaped(starter) + "</p>";
    text += "<table cellspacing=\"0\" cellpadding=\"3\">" + LineRows() + "</table>";
    browser_->setHtml(text + FindingTexts(facts, explanation));
}

QString ExplanationPane::LineRows() const {
    QString rows;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        const timing::ExplanationLine& line = lines_[i];
        const QString at =
            line.isMeanwhile
                ? QString()
                : QStringLiteral("<a href=\"#%1\">%2</a>").arg(i).arg(Escaped(line.at));
        rows += QStringLiteral(
                    "<tr><td><nobr>%1</nobr></td><td align=\"right\"><nobr>%2</nobr></td>"
                    "<td>%3%4</td></tr>")
                    .arg(at, Escaped(line.time), line.isMeanwhile ? "&nbsp;&nbsp;&nbsp;" : "",
                         Escaped(line.text));
    }
    return rows;
}

}  // namespace kvx::desktop
