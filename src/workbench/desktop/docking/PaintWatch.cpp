#include "workbench/desktop/docking/PaintWatch.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include "workbench/desktop/docking/DockingWindow.h"

namespace kvx::desktop {
namespace {

bool IsOfComponent(const QObject* object) {
    for (; object; object = object->parent())
        if (dynamic_cast<const DockArea*>(object)) return true;
    return false;
}

}  // namespace

PaintWatch::PaintWatch() {
    qApp->installEventFilter(this);
}

bool PaintWatch::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Paint || isTold_ || !onPaint || !IsOfComponent(watched))
        return false;
    isTold_ = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            isTold_ = false;
            onPaint();
        },
        Qt::QueuedConnection);
    return false;
}

}  // namespace kvx::desktop
