#include "platform/qt/LightPalette.h"

#include <QApplication>
#include <QEvent>
#include <QStyle>

namespace kvx::qt {

LightPalette::LightPalette(QWidget& window) : QObject(&window), window_(window) {
    qApp->installEventFilter(this);
    Apply();
}

bool LightPalette::eventFilter(QObject* object, QEvent* event) {
    if (object == qApp && event->type() == QEvent::ApplicationPaletteChange) Apply();
    return QObject::eventFilter(object, event);
}

// The style's own palette is a light one; a light desktop's is taken as it is.
void LightPalette::Apply() {
    constexpr int kMiddle = 128;
    const bool dark = QApplication::palette().color(QPalette::Window).lightness() < kMiddle;
    window_.setPalette(dark ? QApplication::style()->standardPalette() : QPalette());
}

}  // namespace kvx::qt
