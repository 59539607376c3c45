#include "platform/qt/Desktop.h"

#include <QApplication>
#include <QPalette>
#include <QScreen>
#include <set>

#include "platform/base/Keys.h"
#include "platform/base/SystemInfo.h"
#include "platform/qt/Convert.h"
#include "platform/qt/PlainWindow.h"

namespace kvx::qt {

namespace {

std::set<UINT>& KeysDown() {
    static std::set<UINT> keys;
    return keys;
}

}  // namespace

std::optional<COLORREF> Desktop::SysColor(int index) const {
    const QPalette palette = QApplication::palette();
    const auto role = [&palette](QPalette::ColorRole which,
                                 QPalette::ColorGroup group = QPalette::Active) {
        return ToColour(palette.color(group, which));
    };
    switch (index) {
        case COLOR_WINDOW:
            return role(QPalette::Base);
        case COLOR_WINDOWTEXT:
            return role(QPalette::Text);
        case COLOR_BTNFACE:
        case COLOR_MENU:
            return role(QPalette::Window);
        case COLOR_BTNTEXT:
        case COLOR_MENUTEXT:
            return role(QPalette::WindowText);
        case COLOR_BTNSHADOW:
            return role(QPalette::Dark);
        case COLOR_BTNHIGHLIGHT:
            return role(QPalette::Light);
        case COLOR_3DLIGHT:
            return role(QPalette::Midlight);
        case COLOR_3DDKSHADOW:
        case COLOR_WINDOWFRAME:
            return role(QPalette::Shadow);
        case COLOR_HIGHLIGHT:
            return role(QPalette::Highlight);
        case COLOR_HIGHLIGHTTEXT:
            return role(QPalette::HighlightedText);
        case COLOR_GRAYTEXT:
            return role(QPalette::Text, QPalette::Disabled);
        case COLOR_SCROLLBAR:
            return role(QPalette::Mid);
        case COLOR_INFOBK:
            return role(QPalette::ToolTipBase);
        case COLOR_INFOTEXT:
            return role(QPalette::ToolTipText);
        default:
            return {};
    }
}

SIZE Desktop::ScreenSize() const {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    return screen ? ToSize(screen->size()) : SIZE{};
}

RECT Desktop::WorkArea(POINT at) const {
    const QScreen* screen = QGuiApplication::screenAt(ToQPoint(at));
    if (!screen) screen = QGuiApplication::primaryScreen();
    return screen ? ToRect(screen->availableGeometry()) : RECT{};
}

POINT Desktop::CursorPosition() const {
    return ToPoint(QCursor::pos());
}

void Desktop::ShowCursor(HCURSOR cursor) {
    PlainWindow* window = PlainWindow::AtWork();
    if (!window) window = PlainWindow::Of(QWidget::mouseGrabber());
    if (!window) window = PlainWindow::Of(QApplication::widgetAt(QCursor::pos()));
    if (window) window->ShowCursor(cursor);
}

bool Desktop::IsKeyDown(UINT key) const {
    const Qt::KeyboardModifiers modifiers = QGuiApplication::keyboardModifiers();
    const Qt::MouseButtons buttons = QGuiApplication::mouseButtons();
    switch (key) {
        case VK_SHIFT:
            return KeysDown().contains(key) || (modifiers & Qt::ShiftModifier);
        case VK_CONTROL:
            return KeysDown().contains(key) || (modifiers & Qt::ControlModifier);
        case VK_MENU:
            return KeysDown().contains(key) || (modifiers & Qt::AltModifier);
        case VK_LBUTTON:
            return buttons & Qt::LeftButton;
        case VK_RBUTTON:
            return buttons & Qt::RightButton;
        case VK_MBUTTON:
            return buttons & Qt::MiddleButton;
        default:
            return KeysDown().contains(key);
    }
}

void Desktop::Beep(UINT) {
    QApplication::beep();
}

void Desktop::NoteKey(UINT key, bool down) {
    if (down)
        KeysDown().insert(key);
    else
        KeysDown().erase(key);
}

void Desktop::ForgetKeys() {
    KeysDown().clear();
}

}  // namespace kvx::qt
