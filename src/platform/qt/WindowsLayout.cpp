// Look, place, visibility and input focus of windows.

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QImage>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QVariant>

#include "platform/qt/Convert.h"
#include "platform/qt/PlainWindow.h"
#include "platform/qt/TextEngine.h"
#include "platform/qt/Windows.h"

namespace kvx::qt {

namespace {

constexpr char kMainWindowProperty[] = "kvxMainWindow";

// Another window is modal and this one is not inside it.
bool IsBlocked(const QWidget* widget) {
    const QWidget* const modal = QApplication::activeModalWidget();
    if (!modal || !widget->isWindow()) return false;
    for (const QWidget* w = widget; w; w = w->parentWidget())
        if (w == modal) return false;
    return true;
}

}  // namespace

void QtWindows::SetText(HWND window, const CString& text) {
    QWidget* const widget = ToWidget(window);
    const QString shown = ToQString(text);
    if (auto* button = qobject_cast<QAbstractButton*>(widget)) return button->setText(shown);
    if (auto* edit = qobject_cast<QLineEdit*>(widget)) return edit->setText(shown);
    if (auto* edit = qobject_cast<QPlainTextEdit*>(widget)) return edit->setPlainText(shown);
    if (auto* combo = qobject_cast<QComboBox*>(widget)) return combo->setEditText(shown);
    widget->setWindowTitle(shown);
}

CString QtWindows::Text(HWND window) const {
    const QWidget* const widget = ToWidget(window);
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
        return ToCString(button->text());
    if (const auto* edit = qobject_cast<const QLineEdit*>(widget)) return ToCString(edit->text());
    if (const auto* edit = qobject_cast<const QPlainTextEdit*>(widget))
        return ToCString(edit->toPlainText());
    if (const auto* combo = qobject_cast<const QComboBox*>(widget))
        return ToCString(combo->currentText());
    return ToCString(widget->windowTitle());
}

void QtWindows::SetFont(HWND window, const LOGFONT& font) {
    QWidget* const widget = ToWidget(window);
    widget->setFont(RealFont(font));
    // A closed combo box is as high as its font asks; the height it was given is that of the list.
    if (qobject_cast<QComboBox*>(widget))
        widget->resize(widget->width(), widget->sizeHint().height());
}

void QtWindows::SetFrame(HWND window, const WindowFrame& frame) {
    if (auto* plain = PlainWindow::Of(ToWidget(window))) plain->SetFrame(frame);
}

void QtWindows::Show(HWND window, bool show, bool activate) {
    QWidget* const widget = ToWidget(window);
    if (!show) ActivateOwner(widget);
    widget->setVisible(show);
    if (!show || !widget->isWindow() || !activate) return;
    if (!widget->testAttribute(Qt::WA_ShowWithoutActivating)) widget->activateWindow();
}

bool QtWindows::IsVisible(HWND window) const {
    return ToWidget(window)->isVisible();
}

bool QtWindows::IsShown(HWND window) const {
    return !ToWidget(window)->isHidden();
}

// An active window that goes leaves the keyboard to its owner.
void QtWindows::ActivateOwner(const QWidget* widget) {
    if (!widget->isWindow() || !widget->isActiveWindow() || !widget->parentWidget()) return;
    widget->parentWidget()->activateWindow();
}

void QtWindows::Enable(HWND window, bool enable) {
    QWidget* const widget = ToWidget(window);
    if (!enable) KeepFocus(widget);
    widget->setEnabled(enable);
    if (enable) RestoreFocus(widget);
}

void QtWindows::KeepFocus(QWidget* disabled) {
    QWidget* const focus = disabled->window()->focusWidget();
    if (focus && (focus == disabled || disabled->isAncestorOf(focus)))
        lostFocus_.push_back({disabled, focus});
}

void QtWindows::RestoreFocus(const QWidget* enabled) {
    for (const LostFocus& lost : lostFocus_)
        if (lost.disabled == enabled && lost.focus) lost.focus->setFocus();
    std::erase_if(lostFocus_, [enabled](const LostFocus& lost) {
        return !lost.disabled || lost.disabled == enabled;
    });
}

bool QtWindows::IsEnabled(HWND window) const {
    const QWidget* const widget = ToWidget(window);
    return !widget->testAttribute(Qt::WA_ForceDisabled) && !IsBlocked(widget);
}

void QtWindows::SetFocus(HWND window) {
    if (window)
        ToWidget(window)->setFocus(Qt::OtherFocusReason);
    else if (QWidget* focus = QApplication::focusWidget())
        focus->clearFocus();
}

HWND QtWindows::Focus() const {
    QWidget* focus = QApplication::focusWidget();
    // Parts of controls count as the control.
    while (focus && !OwnWindow::Of(focus) && focus->parentWidget() &&
           OwnWindow::Of(focus->parentWidget()))
        focus = focus->parentWidget();
    return ToHandle(focus);
}

void QtWindows::SetCapture(HWND window) {
    capture_ = ToWidget(window);
    if (capture_->isVisible()) capture_->grabMouse();
}

void QtWindows::ReleaseCapture() {
    if (QWidget* grabber = QWidget::mouseGrabber()) grabber->releaseMouse();
    capture_ = nullptr;
}

HWND QtWindows::Capture() const {
    const QWidget* const grabber = QWidget::mouseGrabber();
    return ToHandle(grabber ? grabber : capture_.data());
}

void QtWindows::Raise(HWND window) {
    QWidget* const widget = ToWidget(window);
    widget->raise();
    if (widget->isWindow() && !widget->testAttribute(Qt::WA_ShowWithoutActivating))
        widget->activateWindow();
}

// A window of its own moves with its frame, as far as that is known.
void QtWindows::Move(HWND window, const RECT& rect) {
    QWidget* const widget = ToWidget(window);
    QRect place = ToQRect(rect);
    if (widget->isWindow()) {
        const QSize frame = widget->frameGeometry().size() - widget->geometry().size();
        widget->move(place.topLeft());
        widget->resize((place.size() - frame).expandedTo(QSize(0, 0)));
    } else {
        place.translate(widget->parentWidget()->contentsRect().topLeft());
        place.setSize(place.size().expandedTo(QSize(0, 0)));
        widget->setGeometry(place);
    }
    if (auto* plain = PlainWindow::Of(widget)) plain->SyncSize();
}

RECT QtWindows::Bounds(HWND window) const {
    const QWidget* const widget = ToWidget(window);
    if (widget->isWindow()) return ToRect(widget->frameGeometry());
    const QPoint origin = widget->parentWidget()->contentsRect().topLeft();
    return ToRect(widget->geometry().translated(-origin));
}

RECT QtWindows::ScreenBounds(HWND window) const {
    const QWidget* const widget = ToWidget(window);
    if (widget->isWindow()) return ToRect(widget->frameGeometry());
    return ToRect(QRect(widget->mapToGlobal(QPoint(0, 0)), widget->size()));
}

SIZE QtWindows::ClientSize(HWND window) const {
    const SIZE size = ToSize(ToWidget(window)->contentsRect().size());
    return {std::max(size.cx, 0), std::max(size.cy, 0)};
}

POINT QtWindows::ClientOrigin(HWND window) const {
    const QWidget* const widget = ToWidget(window);
    return ToPoint(widget->mapToGlobal(widget->contentsRect().topLeft()));
}

PixelGrid QtWindows::Grid(HWND window) const {
    const QWidget* const widget = ToWidget(window);
    const double ratio = widget->devicePixelRatioF();
    if (ratio == 1) return {};
    const QPoint origin = widget->mapTo(widget->window(), widget->contentsRect().topLeft());
    return {ratio, ToPoint(origin)};
}

void QtWindows::Present(HWND window, const RECT& client, bool atOnce) {
    QWidget* const widget = ToWidget(window);
    const QRect part = ToQRect(client).translated(widget->contentsRect().topLeft());
    if (atOnce && !PlainWindow::IsAnyPainting())
        widget->repaint(part);
    else
        widget->update(part);
}

void QtWindows::SetScrollBar(HWND window, int bar, const ScrollBarLook& look) {
    if (auto* plain = PlainWindow::Of(ToWidget(window))) plain->SetScrollBar(bar, look);
}

int QtWindows::ScrollTrackPosition(HWND window, int bar) const {
    const auto* const plain = PlainWindow::Of(ToWidget(window));
    return plain ? plain->ScrollTrackPosition(bar) : 0;
}

void QtWindows::AcceptDrops(HWND window, bool accept) {
    ToWidget(window)->setAcceptDrops(accept);
}

// The one that was named, else the application's first main window.
HWND QtWindows::MainWindow() const {
    const QWidget* first = nullptr;
    for (const QWidget* top : QApplication::topLevelWidgets()) {
        if (top->property(kMainWindowProperty).toBool()) return ToHandle(top);
        if (!first && top->inherits("QMainWindow")) first = top;
    }
    return ToHandle(first);
}

void QtWindows::SetMainWindow(HWND window) {
    for (QWidget* top : QApplication::topLevelWidgets())
        top->setProperty(kMainWindowProperty, QVariant());
    if (window) ToWidget(window)->setProperty(kMainWindowProperty, true);
}

// In the pixels of the screen.

}  // namespace kvx::qt
