#include "workbench/desktop/docking/CommandUpdates.h"

#include <QApplication>
#include <QTimerEvent>
#include <utility>

namespace kvx::desktop {
namespace {

constexpr int kDelay = 30;  // milliseconds: what is held down repeats about as fast

bool MayChangeCommands(QEvent::Type type) {
    switch (type) {
        case QEvent::MouseButtonRelease:
        case QEvent::KeyRelease:
        case QEvent::Wheel:
        case QEvent::Drop:
        case QEvent::ApplicationActivate:
        case QEvent::WindowActivate:
        case QEvent::FocusIn:
            return true;
        default:
            return false;
    }
}

}  // namespace

CommandUpdates::CommandUpdates(std::function<void()> update) : update_(std::move(update)) {
    qApp->installEventFilter(this);
}

void CommandUpdates::Soon() {
    if (!soon_.isActive()) soon_.start(kDelay, this);
}

bool CommandUpdates::eventFilter(QObject* object, QEvent* event) {
    if (MayChangeCommands(event->type())) Soon();
    return QObject::eventFilter(object, event);
}

void CommandUpdates::timerEvent(QTimerEvent* event) {
    if (event->timerId() != soon_.timerId()) return QObject::timerEvent(event);
    soon_.stop();
    update_();
}

}  // namespace kvx::desktop
