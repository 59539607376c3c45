// Mouse, keys, focus and drops as messages.

#include <QApplication>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>
#include <QWheelEvent>
#include <utility>

#include "platform/qt/Convert.h"
#include "platform/qt/Desktop.h"
#include "platform/qt/Keys.h"
#include "platform/qt/PlainWindow.h"
#include "platform/windows/Wnd.h"

namespace kvx::qt {

namespace {

constexpr LRESULT kProcessed = 0;
constexpr int kNotch = 120;
constexpr LPARAM kRepeated = LPARAM{1} << 30;

// The window that is handling a mouse event, for a scope.
PlainWindow* g_atWork = nullptr;

class MouseScope {
  public:
    explicit MouseScope(PlainWindow* window) : outer_(std::exchange(g_atWork, window)) {}
    ~MouseScope() { g_atWork = outer_; }
    MouseScope(const MouseScope&) = delete;
    MouseScope& operator=(const MouseScope&) = delete;

  private:
    PlainWindow* outer_;
};

LPARAM PointParam(QPoint p) {
    return MakePointParam(p.x(), p.y());
}

COleDataObject DataOf(const QMimeData* mime) {
    std::vector<CString> files;
    for (const QUrl& url : mime->urls())
        if (url.isLocalFile()) files.push_back(ToCString(url.toLocalFile()));
    return {mime->hasText() ? ToCString(mime->text()) : CString(), std::move(files)};
}

Qt::DropAction ActionOf(DROPEFFECT effect) {
    if (effect & DROPEFFECT_MOVE) return Qt::MoveAction;
    if (effect & DROPEFFECT_LINK) return Qt::LinkAction;
    return Qt::CopyAction;
}

// Of the button going down; 0 for a button that has no messages. Going up follows it, then the
// double click.
UINT DownMessage(Qt::MouseButton button) {
    switch (button) {
        case Qt::LeftButton:
            return WM_LBUTTONDOWN;
        case Qt::RightButton:
            return WM_RBUTTONDOWN;
        case Qt::MiddleButton:
            return WM_MBUTTONDOWN;
        default:
            return 0;
    }
}

}  // namespace

PlainWindow* PlainWindow::AtWork() {
    return g_atWork;
}

void PlainWindow::SendButton(QMouseEvent* event, ButtonAction action) {
    const UINT down = DownMessage(event->button());
    if (down == 0) return event->ignore();
    const MouseScope scope(this);
    Send(down + static_cast<UINT>(action), MouseFlagsOf(event->buttons(), event->modifiers()),
         PointParam(event->position().toPoint() - ClientOrigin()));
    ApplyCursor();
}

void PlainWindow::mousePressEvent(QMouseEvent* event) {
    SendButton(event, ButtonAction::Down);
}

void PlainWindow::mouseReleaseEvent(QMouseEvent* event) {
    SendButton(event, ButtonAction::Up);
}

void PlainWindow::mouseDoubleClickEvent(QMouseEvent* event) {
    SendButton(event, ButtonAction::DoubleClick);
}

// WM_SETCURSOR unless the mouse is captured, then WM_MOUSEMOVE; the last cursor set counts.
void PlainWindow::mouseMoveEvent(QMouseEvent* event) {
    const MouseScope scope(this);
    if (QWidget::mouseGrabber() != this) Send(WM_SETCURSOR);
    Send(WM_MOUSEMOVE, MouseFlagsOf(event->buttons(), event->modifiers()),
         PointParam(event->position().toPoint() - ClientOrigin()));
    ApplyCursor();
}

void PlainWindow::ShowCursor(HCURSOR cursor) {
    nextCursor_ = cursor;
    if (g_atWork != this) ApplyCursor();
}

void PlainWindow::ApplyCursor() {
    if (const auto cursor = std::exchange(nextCursor_, std::nullopt)) setCursor(ToQCursor(*cursor));
}

// Where the toolkit cannot bring the mouse from outside, its leaving is the last that is seen.
void PlainWindow::leaveEvent(QEvent*) {
    Send(WM_MOUSELEAVE);
    if (QWidget::mouseGrabber() != this) return;
    const QPoint at = mapFromGlobal(QCursor::pos());
    const QPoint outside = rect().contains(at) ? QPoint(-1, -1) : at;
    Send(WM_MOUSEMOVE, MouseFlagsOf(QGuiApplication::mouseButtons(), {}),
         PointParam(outside - ClientOrigin()));
}

// One message a notch: high-resolution wheels and touch pads send many small turns.
void PlainWindow::SendNotches(int& rest, UINT message, const QWheelEvent* event) {
    const int notches = rest / kNotch;
    if (notches == 0) return;
    rest -= notches * kNotch;
    Send(message, MakeWheel(MouseFlagsOf(event->buttons(), event->modifiers()), notches * kNotch),
         PointParam(event->globalPosition().toPoint()));
}

void PlainWindow::wheelEvent(QWheelEvent* event) {
    const QPoint turn = event->angleDelta();
    wheelRest_[1] += turn.y();
    wheelRest_[0] -= turn.x();  // the toolkit counts positive to the left
    SendNotches(wheelRest_[1], WM_MOUSEWHEEL, event);
    SendNotches(wheelRest_[0], WM_MOUSEHWHEEL, event);
}

// What no window here wants goes on to the host's window around them.
void PlainWindow::contextMenuEvent(QContextMenuEvent* event) {
    event->setAccepted(Send(WM_CONTEXTMENU, 0, PointParam(event->globalPos())) == kProcessed);
}

// Keys that nobody here wants go on to the window above.
void PlainWindow::keyPressEvent(QKeyEvent* event) {
    const UINT key = VirtualKeyOf(*event);
    Desktop::NoteKey(key, true);
    const LPARAM flags = event->isAutoRepeat() ? kRepeated : 0;
    bool processed = key != 0 && Send(WM_KEYDOWN, key, flags) == kProcessed;
    const bool text = !(event->modifiers() & (Qt::AltModifier | Qt::MetaModifier));
    for (const char32_t character : text ? event->text().toUcs4() : QList<uint>())
        processed |= Send(WM_CHAR, character, flags) == kProcessed;
    event->setAccepted(processed);
}

void PlainWindow::keyReleaseEvent(QKeyEvent* event) {
    if (event->isAutoRepeat()) return event->ignore();
    const UINT key = VirtualKeyOf(*event);
    Desktop::NoteKey(key, false);
    event->setAccepted(key != 0 && Send(WM_KEYUP, key) == kProcessed);
}

void PlainWindow::focusInEvent(QFocusEvent*) {
    Send(WM_SETFOCUS);
}

void PlainWindow::focusOutEvent(QFocusEvent*) {
    Desktop::ForgetKeys();
    Send(WM_KILLFOCUS);
}

void PlainWindow::hideEvent(QHideEvent*) {
    if (QWidget::mouseGrabber() == this) ReleaseCapture();
}

void PlainWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    Send(WM_CLOSE);
}

void PlainWindow::TakeDrag(QDragMoveEvent* event, bool entered) {
    IWindowSink* const sink = Sink();
    if (!sink) return event->ignore();
    const POINT at = ToPoint(event->position().toPoint() - ClientOrigin());
    const DROPEFFECT effect = sink->OnDrag(
        DataOf(event->mimeData()), MouseFlagsOf(event->buttons(), event->modifiers()), at, entered);
    if (effect == DROPEFFECT_NONE) return event->ignore();
    event->setDropAction(ActionOf(effect));
    event->accept();
}

void PlainWindow::dragEnterEvent(QDragEnterEvent* event) {
    TakeDrag(event, true);
}

void PlainWindow::dragMoveEvent(QDragMoveEvent* event) {
    TakeDrag(event, false);
}

void PlainWindow::dragLeaveEvent(QDragLeaveEvent*) {
    if (IWindowSink* sink = Sink()) sink->OnDragLeave();
}

void PlainWindow::dropEvent(QDropEvent* event) {
    IWindowSink* const sink = Sink();
    if (!sink) return event->ignore();
    const POINT at = ToPoint(event->position().toPoint() - ClientOrigin());
    const DROPEFFECT wanted =
        event->dropAction() == Qt::MoveAction ? DROPEFFECT_MOVE : DROPEFFECT_COPY;
    const DROPEFFECT effect = sink->OnDrop(DataOf(event->mimeData()), wanted, at);
    event->setDropAction(ActionOf(effect));
    event->setAccepted(effect != DROPEFFECT_NONE);
}

}  // namespace kvx::qt
