#include "platform/qt/CancelMode.h"

#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QTimerEvent>
#include <QWidget>
#include <vector>

#include "platform/qt/OwnWindow.h"

namespace kvx::qt {

namespace {

constexpr int kBackAtOnce = 20;  // milliseconds

// The keyboard is the window's, or a window's that it has put beside itself to say how its work
// goes.
bool IsInFront(const QWidget* window) {
    const QWidget* const active = QApplication::activeWindow();
    if (!active || active == window) return active != nullptr;
    return OwnWindow::Of(active) && !active->isModal() && window->isAncestorOf(active);
}

void Cancel(bool all) {
    std::vector<QPointer<QWidget>> windows;
    for (QWidget* widget : QApplication::allWidgets()) {
        const bool told = OwnWindow::Of(widget) && widget->isVisible();
        if (told && (all || !IsInFront(widget->window()))) windows.emplace_back(widget);
    }
    for (const QPointer<QWidget>& window : windows) {
        if (OwnWindow* own = window ? OwnWindow::Of(window) : nullptr) own->Send(WM_CANCELMODE);
    }
}

}  // namespace

CancelMode::CancelMode() {
    qApp->installEventFilter(this);
}

// The keyboard often leaves a window only to come back at once: that is looked at when it is done.
bool CancelMode::eventFilter(QObject* object, QEvent* event) {
    const auto* const widget = qobject_cast<const QWidget*>(object);
    if (!widget || !widget->isWindow()) return QObject::eventFilter(object, event);
    const bool menu = event->type() == QEvent::Show && widget->windowType() == Qt::Popup;
    if (menu || event->type() == QEvent::WindowBlocked) Cancel(true);
    if (event->type() == QEvent::WindowDeactivate) later_.start(kBackAtOnce, this);
    return QObject::eventFilter(object, event);
}

void CancelMode::timerEvent(QTimerEvent* event) {
    if (event->timerId() != later_.timerId()) return QObject::timerEvent(event);
    later_.stop();
    Cancel(false);
}

}  // namespace kvx::qt
