#include "platform/qt/MessagePump.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QWindow>
#include <memory>
#include <utility>
#include <vector>

namespace kvx::qt {

namespace {

constexpr int kFirstShowMilliseconds = 100;

// The one whose events alone are dispatched; null for none.
QWidget* g_served = nullptr;

// The window itself, what is inside it, and windows that it owns.
bool BelongsTo(const QObject* object, const QWidget* window) {
    for (; object; object = object->parent())
        if (object == window) return true;
    return false;
}

bool IsInput(QEvent::Type type) {
    switch (type) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Wheel:
        case QEvent::Close:
            return true;
        default:
            return false;
    }
}

// Events that tell nothing new later.
bool IsPassing(QEvent::Type type) {
    switch (type) {
        case QEvent::MouseMove:
        case QEvent::HoverMove:
        case QEvent::HoverEnter:
        case QEvent::HoverLeave:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
        case QEvent::ContextMenu:
        case QEvent::Timer:  // fires again: a timer that is not answered stays set
            return true;
        default:
            return false;
    }
}

// Watches the whole application while one window is served.
class OthersWait : public QObject {
  public:
    explicit OthersWait(QWidget* served)
        : served_(served), outer_(std::exchange(g_served, served)) {
        qApp->installEventFilter(this);
    }
    ~OthersWait() override {
        qApp->removeEventFilter(this);
        g_served = outer_;
        for (auto& [receiver, event] : held_)
            if (receiver) QCoreApplication::postEvent(receiver, event.release());
    }
    bool eventFilter(QObject* receiver, QEvent* event) override {
        const bool input = IsInput(event->type());
        if (!input && !IsPassing(event->type())) return false;
        if (!served_ || IsServed(receiver)) return false;
        if (input) held_.push_back({receiver, std::unique_ptr<QEvent>(event->clone())});
        return true;
    }

  private:
    bool IsServed(const QObject* receiver) const {
        if (!receiver->isWindowType()) return BelongsTo(receiver, served_);
        for (const QWidget* top : QApplication::topLevelWidgets())
            if (top->windowHandle() == receiver)
                return top == served_->window() || BelongsTo(top, served_);
        return false;
    }
    struct Held {
        QPointer<QObject> receiver;
        std::unique_ptr<QEvent> event;
    };
    QPointer<QWidget> served_;
    QWidget* outer_;
    std::vector<Held> held_;
};

// A window that has just been shown is not on the screen before some events have gone to and fro.
void AwaitFirstShow(QWidget* window) {
    const QWindow* const handle = window->window()->windowHandle();
    if (!handle || handle->isExposed() || !window->isVisible()) return;
    const QPointer<QWidget> guard(window);
    QElapsedTimer timer;
    timer.start();
    while (guard && window->isVisible() && !handle->isExposed() &&
           timer.elapsed() < kFirstShowMilliseconds)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
}

}  // namespace

void DispatchWaitingFor(QWidget* window) {
    if (!window) return QCoreApplication::processEvents();
    const OthersWait others(window);
    AwaitFirstShow(window);
    QCoreApplication::processEvents();
}

bool IsHeldBack(const QWidget* widget) {
    return g_served && !BelongsTo(widget, g_served);
}

}  // namespace kvx::qt
