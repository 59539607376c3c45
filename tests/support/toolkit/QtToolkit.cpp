#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QMenu>
#include <QMessageBox>
#include <QPixmap>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <memory>
#include <utility>

#include "platform/base/Keys.h"
#include "platform/base/Styles.h"
#include "support/toolkit/Toolkit.h"

namespace kvx::test {
namespace {

QWidget* WidgetOf(HWND window) {
    return reinterpret_cast<QWidget*>(window);
}

QPoint InWidget(HWND window, POINT at) {
    return WidgetOf(window)->contentsRect().topLeft() + QPoint(at.x, at.y);
}

int KeyOf(UINT key) {
    switch (key) {
        case VK_LEFT:
            return Qt::Key_Left;
        case VK_RIGHT:
            return Qt::Key_Right;
        case VK_RETURN:
            return Qt::Key_Return;
        case VK_ESCAPE:
            return Qt::Key_Escape;
        case VK_TAB:
            return Qt::Key_Tab;
        default:
            return static_cast<int>(key);
    }
}

void SendKey(HWND window, QEvent::Type type, int key, Qt::KeyboardModifiers modifiers) {
    QKeyEvent event(type, key, modifiers);
    QApplication::sendEvent(WidgetOf(window), &event);
}

}  // namespace

void PressMouse(HWND window, POINT at) {
    QTest::mousePress(WidgetOf(window), Qt::LeftButton, {}, InWidget(window, at));
}

void MoveMouse(HWND window, POINT at) {
    QTest::mouseMove(WidgetOf(window), InWidget(window, at));
}

void ReleaseMouse(HWND window, POINT at) {
    QTest::mouseRelease(WidgetOf(window), Qt::LeftButton, {}, InWidget(window, at));
}

void PressAltKey(HWND window, UINT key) {
    SendKey(window, QEvent::KeyPress, Qt::Key_Alt, Qt::AltModifier);
    SendKey(window, QEvent::KeyPress, KeyOf(key), Qt::AltModifier);
}

void ReleaseAlt(HWND window) {
    SendKey(window, QEvent::KeyRelease, Qt::Key_Alt, Qt::NoModifier);
}

void TypeKey(UINT key) {
    QTest::keyClick(QApplication::focusWindow(), static_cast<Qt::Key>(KeyOf(key)));
}

void AnswerBox(UINT id) {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    const auto button = id == IDYES ? QMessageBox::Yes : QMessageBox::Cancel;
    ASSERT_NE(box->button(button), nullptr);
    box->button(button)->click();
}

void ChooseInMenu(int index) {
    QWidget* const menu = QApplication::activePopupWidget();
    ASSERT_NE(menu, nullptr);
    for (int i = 0; i <= index; ++i) QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);
}

void Soon(std::function<void()> action) {
    QTimer::singleShot(0, qApp, std::move(action));
}

void Settle() {
    QApplication::processEvents();
}

Surface ScreenOf(HWND window) {
    const QImage shown = WidgetOf(window)
                             ->grab(WidgetOf(window)->contentsRect())
                             .toImage()
                             .convertToFormat(QImage::Format_RGB32);
    Surface picture({shown.width(), shown.height()}, 0);
    for (int y = 0; y < shown.height(); ++y)
        std::copy_n(reinterpret_cast<const QRgb*>(shown.constScanLine(y)), shown.width(),
                    picture.Row(y));
    return picture;
}

void WhileBehind(HWND, bool menu, const std::function<void()>& look) {
    std::unique_ptr<QWidget> other;
    if (menu)
        other = std::make_unique<QMenu>();
    else
        other = std::make_unique<QDialog>();
    other->setWindowModality(menu ? Qt::NonModal : Qt::ApplicationModal);
    other->show();
    QApplication::processEvents();
    look();
}

bool SetDarkDesktop(bool dark) {
    static const QPalette before = QApplication::palette();
    QPalette palette = before;
    if (dark) {
        palette.setColor(QPalette::Base, QColor(25, 25, 25));
        palette.setColor(QPalette::Window, QColor(45, 45, 45));
    }
    QApplication::setPalette(palette);
    return true;
}

}  // namespace kvx::test
