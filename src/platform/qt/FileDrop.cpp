#include "platform/qt/FileDrop.h"

#include <QCoreApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

#include "platform/qt/Convert.h"

namespace kvx::qt {

bool DropFilesOn(QWidget* widget, HDROP drop) {
    QList<QUrl> urls;
    for (UINT i = 0; i < DragQueryFileCount(drop); ++i)
        urls << QUrl::fromLocalFile(ToQString(DragQueryFile(drop, i)));
    QMimeData data;
    data.setUrls(urls);
    const QPoint middle = widget->rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &enter);
    if (!enter.isAccepted()) return false;
    QDropEvent dropped(middle, Qt::CopyAction, &data, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &dropped);
    return dropped.isAccepted();
}

}  // namespace kvx::qt
