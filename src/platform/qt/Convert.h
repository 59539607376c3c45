#pragma once
// The one place where values of the platform layer become values of the toolkit and back.

#include <QColor>
#include <QMargins>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <QWidget>

#include "platform/base/Types.h"
#include "platform/windows/Cursor.h"

namespace kvx::qt {

inline QWidget* ToWidget(HWND window) {
    return reinterpret_cast<QWidget*>(window);
}
inline HWND ToHandle(const QWidget* widget) {
    return reinterpret_cast<HWND>(const_cast<QWidget*>(widget));
}

inline QString ToQString(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}
inline CString ToCString(const QString& text) {
    return text.toStdString();
}

inline QPoint ToQPoint(POINT p) {
    return {p.x, p.y};
}
inline POINT ToPoint(QPoint p) {
    return {p.x(), p.y()};
}
inline QRect ToQRect(const RECT& r) {
    return {r.left, r.top, r.Width(), r.Height()};
}
inline RECT ToRect(const QRect& r) {
    return {r.x(), r.y(), r.x() + r.width(), r.y() + r.height()};
}
inline SIZE ToSize(QSize s) {
    return {s.width(), s.height()};
}

inline QColor ToQColor(COLORREF c) {
    return QColor(static_cast<int>(GetRValue(c)), static_cast<int>(GetGValue(c)),
                  static_cast<int>(GetBValue(c)));
}
inline COLORREF ToColour(const QColor& c) {
    return RGB(static_cast<unsigned>(c.red()), static_cast<unsigned>(c.green()),
               static_cast<unsigned>(c.blue()));
}

QCursor ToQCursor(HCURSOR cursor);

}  // namespace kvx::qt
