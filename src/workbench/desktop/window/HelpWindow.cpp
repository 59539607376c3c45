#include "workbench/desktop/window/HelpWindow.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QShortcut>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

namespace kvx::desktop {
namespace {

constexpr QSize kFirstSize(820, 640);

}  // namespace

HelpWindow::HelpWindow(QWidget* parent) : QDialog(parent), page_(new QTextBrowser) {
    setWindowTitle("KVX Workbench Help");
    resize(kFirstSize);
    page_->setOpenExternalLinks(false);
    auto* bar = new QHBoxLayout;
    const auto add = [&](const QString& text, const QKeySequence& key, auto slot, auto enabled) {
        auto* button = new QToolButton;
        button->setText(text);
        button->setAutoRaise(true);
        button->setShortcut(key);
        button->setToolTip(text + " (" + key.toString(QKeySequence::NativeText) + ")");
        button->setEnabled(false);
        connect(button, &QToolButton::clicked, page_, slot);
        connect(page_, enabled, button, &QWidget::setEnabled);
        bar->addWidget(button);
        return button;
    };
    add("Back", QKeySequence("Alt+Left"), &QTextBrowser::backward,
        &QTextBrowser::backwardAvailable);
    add("Forward", QKeySequence("Alt+Right"), &QTextBrowser::forward,
        &QTextBrowser::forwardAvailable);
    bar->addStretch();
    auto* column = new QVBoxLayout(this);
    column->addLayout(bar);
    column->addWidget(page_);
}

void HelpWindow::ShowPage(const QString& path) {
    page_->setSearchPaths({QFileInfo(path).absolutePath()});
    page_->setSource(QUrl::fromLocalFile(path));
    show();
    raise();
    activateWindow();
    page_->setFocus();
}

}  // namespace kvx::desktop
