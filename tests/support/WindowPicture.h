#pragma once
// A window on the real back-end, with everything in it, as it would stand on the screen.

#include <QImage>
#include <QWidget>

#include "platform/qt/Convert.h"

namespace kvx::test {

// Paints what is not painted yet. In pixels of the screen.
inline QImage PictureOf(HWND window) {
    QWidget* const widget = qt::ToWidget(window);
    const double ratio = widget->devicePixelRatioF();
    QImage picture(widget->size() * ratio, QImage::Format_RGB32);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::white);
    widget->render(&picture);
    return picture;
}

}  // namespace kvx::test
