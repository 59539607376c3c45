#include "workbench/desktop/docking/MenuKeys.h"

#include <QApplication>
#include <QEvent>

namespace kvx::desktop {

MenuKeys::MenuKeys() {
    qApp->installEventFilter(this);
}

// An accepted override is delivered as an ordinary key.
bool MenuKeys::eventFilter(QObject* object, QEvent* event) {
    if (event->type() != QEvent::ShortcutOverride || !QApplication::activePopupWidget()) {
        return QObject::eventFilter(object, event);
    }
    event->accept();
    return true;
}

}  // namespace kvx::desktop
