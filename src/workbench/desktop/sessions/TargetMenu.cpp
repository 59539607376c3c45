#include "workbench/desktop/sessions/TargetMenu.h"

#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>

#include "workbench/desktop/QtText.h"
#include "workbench/desktop/sessions/TargetIcons.h"

namespace kvx::desktop {
namespace {

QString StatusOf(const TargetSession& session) {
    const target::RecordBuffer& buffer = session.Buffer();
    const QString count = CountText(buffer.Count());
    const QString capacity = CountText(buffer.Capacity());
    if (!session.IsRunning()) {
        return buffer.Count() == 0 ? "Target stopped: Go (F5) runs it and records"
                                   : "Target stopped";
    }
    if (buffer.IsRecording()) return "Target running, " + count + " of " + capacity + " records";
    return buffer.IsFull() ? "Target running, buffer full" : "Target running, recording stopped";
}

}  // namespace

TargetMenu::TargetMenu(QMainWindow& window, QAction* before)
    : toolbar_(window.addToolBar("Target")), status_(new QLabel) {
    auto* menu = new QMenu("Tar&get", &window);
    window.menuBar()->insertMenu(before, menu);
    const auto add = [&](const QString& text, const QKeySequence& key,
                         std::function<void()>& action) {
        return menu->addAction(text, key, this, [&action] { action(); });
    };
    connect_ = add("&Connect to Simulation", {}, onConnect);
    disconnect_ = add("&Disconnect", {}, onDisconnect);
    menu->addSeparator();
    go_ = add("&Go", QKeySequence("F5"), onGo);
    stop_ = add("&Stop", QKeySequence("Shift+F5"), onStop);
    reset_ = add("&Reset", {}, onReset);
    menu->addSeparator();
    bufferSize_ = add("Recording &Buffer…", {}, onBufferSize);
    go_->setToolTip("Let the target run and record");
    stop_->setToolTip("Stop the target and show what was recorded");
    reset_->setToolTip("Set the target back to its start");
    go_->setIcon(GoIcon());
    stop_->setIcon(StopIcon());
    reset_->setIcon(ResetIcon());
    toolbar_->setObjectName("Target");
    toolbar_->setIconSize({16, 16});
    toolbar_->addActions({go_, stop_, reset_});
    window.statusBar()->addPermanentWidget(status_);
}

void TargetMenu::Show(const TargetSession* session) {
    const bool running = session && session->IsRunning();
    connect_->setEnabled(!session);
    disconnect_->setEnabled(session && !running);
    go_->setEnabled(session && !running);
    stop_->setEnabled(running);
    reset_->setEnabled(session);
    bufferSize_->setEnabled(session && !running);
    toolbar_->setVisible(session);
    status_->setVisible(session);
    if (session) status_->setText(StatusOf(*session));
}

}  // namespace kvx::desktop
