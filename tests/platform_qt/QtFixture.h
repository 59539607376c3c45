#pragma once
// Windows on the toolkit without a display, and the toolkit's own hands to work on them.

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <functional>
#include <string>
#include <vector>

#include "platform/Backend.h"
#include "platform/windows/Wnd.h"
#include "support/UnexpectedBoxes.h"

namespace kvx::test {

using Log = std::vector<std::string>;

class QtFixture : public testing::Test {
  protected:
    QtFixture() { InstallBackend(); }
    ~QtFixture() override {
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
    }

    static QWidget* Widget(const CWnd& window) {
        return reinterpret_cast<QWidget*>(window.GetSafeHwnd());
    }
    // The mouse goes through the window system: it meets whatever window is there, or has the
    // mouse. Points are client coordinates.
    static void Press(const CWnd& at, int x, int y, Qt::KeyboardModifiers modifiers = {},
                      Qt::MouseButton button = Qt::LeftButton) {
        QTest::mousePress(Native(at), button, modifiers, InWindow(at, x, y));
    }
    static void Release(const CWnd& at, int x, int y, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseRelease(Native(at), button, {}, InWindow(at, x, y));
    }
    static void Click(const CWnd& at, int x, int y) {
        QTest::mouseClick(Native(at), Qt::LeftButton, {}, InWindow(at, x, y));
    }
    static void ClickTwice(const CWnd& at, int x, int y) {
        QTest::mouseDClick(Native(at), Qt::LeftButton, {}, InWindow(at, x, y));
    }
    static void MoveMouse(const CWnd& at, int x, int y) {
        QTest::mouseMove(Native(at), InWindow(at, x, y));
        Settle();
    }
    // Keys go to whatever has the focus.
    static void Type(const CWnd& at, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(Native(at), key, modifiers);
    }
    static void Type(const CWnd& at, char character) { QTest::keyClick(Native(at), character); }
    static QWindow* Native(const CWnd& at) { return Widget(at)->window()->windowHandle(); }
    static QPoint InWindow(const CWnd& at, int x, int y) {
        QWidget* const widget = Widget(at);
        return widget->mapTo(widget->window(), widget->contentsRect().topLeft() + QPoint(x, y));
    }

    // Dispatches what waits, what that causes, and what is due to be deleted.
    static void Settle() {
        for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
    }
    // Runs in the middle of whatever loop comes next.
    static void Soon(std::function<void()> action, int milliseconds = 0) {
        QTimer::singleShot(milliseconds, qApp, std::move(action));
    }
    static void ShowActive(CWnd& window) {
        window.ShowWindow(SW_SHOW);
        Settle();
        ASSERT_TRUE(QTest::qWaitForWindowActive(Widget(window)));
        ASSERT_EQ(QApplication::activeWindow(), Widget(window));
    }
    static void MakeTop(CWnd& top, int width = 400, int height = 300) {
        const RECT place{0, 0, width, height};
        ASSERT_TRUE(top.Create(WS_POPUP | WS_CAPTION | WS_SYSMENU, place, nullptr, 0));
        ShowActive(top);
    }

    UnexpectedBoxes boxes;
};

}  // namespace kvx::test
