#include "platform/qt/Convert.h"

#include <QCursor>
#include <QImage>
#include <QPixmap>

#include "platform/base/Resources.h"

namespace kvx::qt {

namespace {

Qt::CursorShape ShapeOf(StandardCursor cursor) {
    switch (cursor) {
        case StandardCursor::IBeam:
            return Qt::IBeamCursor;
        case StandardCursor::Wait:
            return Qt::WaitCursor;
        case StandardCursor::Cross:
            return Qt::CrossCursor;
        case StandardCursor::SizeNS:
            return Qt::SizeVerCursor;
        case StandardCursor::SizeWE:
            return Qt::SizeHorCursor;
        case StandardCursor::SizeAll:
            return Qt::SizeAllCursor;
        case StandardCursor::No:
            return Qt::ForbiddenCursor;
        case StandardCursor::Hand:
            return Qt::PointingHandCursor;
        case StandardCursor::Arrow:
            break;
    }
    return Qt::ArrowCursor;
}

}  // namespace

QCursor ToQCursor(HCURSOR cursor) {
    if (!cursor) return QCursor(Qt::BlankCursor);
    const CursorResource* const image = cursor->image;
    if (!image) return QCursor(ShapeOf(cursor->standard));
    const QImage pixels(reinterpret_cast<const uchar*>(image->pixels), image->width, image->height,
                        QImage::Format_ARGB32);
    return QCursor(QPixmap::fromImage(pixels.copy()), image->hotX, image->hotY);
}

}  // namespace kvx::qt
