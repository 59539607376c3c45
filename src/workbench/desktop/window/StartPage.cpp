#include "workbench/desktop/window/StartPage.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "workbench/desktop/TraceFiles.h"

namespace kvx::desktop {
namespace {

constexpr int kRecentShown = 5;

QLabel* Line(const QString& text, double scale) {
    auto* label = new QLabel(text);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * scale);
    label->setFont(font);
    label->setAlignment(Qt::AlignHCenter);
    return label;
}

void Clear(QLayout& layout) {
    while (QLayoutItem* item = layout.takeAt(0)) {
        // A link may be in the middle of its own signal.
        item->widget()->hide();
        item->widget()->deleteLater();
        delete item;
    }
}

}  // namespace

StartPage::StartPage(QWidget* parent) : QWidget(parent), recent_(new QWidget) {
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    const auto button = [this, buttons](const QString& text, std::function<void()>& action) {
        auto* made = new QPushButton(text);
        connect(made, &QPushButton::clicked, this, [&action] { action(); });
        buttons->addWidget(made);
    };
    button("Open Trace…", onOpenTrace);
    button("Open CTF Folder…", onOpenFolder);
    button("Demonstration", onDemonstration);
    button("Simulated Target", onSimulation);
    buttons->addStretch();
    auto* recent = new QVBoxLayout(recent_);
    recent->setContentsMargins(0, 12, 0, 0);

    auto* page = new QVBoxLayout(this);
    page->setSpacing(12);
    page->addStretch();
    page->addWidget(Line("KVX Workbench", 2.0));
    page->addWidget(Line("Open a recorded kernel trace, or drop it here.", 1.0));
    page->addLayout(buttons);
    page->addWidget(recent_);
    page->addStretch();
}

void StartPage::SetRecent(const QStringList& recordings) {
    Clear(*recent_->layout());
    recent_->setVisible(!recordings.isEmpty());
    recent_->layout()->addWidget(Line("Recent", 1.0));
    for (const QString& recording : recordings.mid(0, kRecentShown)) {
        const QString name = TraceFiles::FromText(recording).Name();
        auto* link = new QLabel("<a href='open'>" + name.toHtmlEscaped() + "</a>");
        link->setAlignment(Qt::AlignHCenter);
        link->setToolTip(recording);
        connect(link, &QLabel::linkActivated, this, [this, recording] { onOpenRecent(recording); });
        recent_->layout()->addWidget(link);
    }
}

}  // namespace kvx::desktop
