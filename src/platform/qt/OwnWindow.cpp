#include "platform/qt/OwnWindow.h"

#include <QCoreApplication>
#include <QVariant>
#include <unordered_map>
#include <utility>

#include "platform/qt/MessageEvent.h"
#include "platform/qt/MessagePump.h"

namespace kvx::qt {

namespace {

constexpr char kIdProperty[] = "kvxId";
constexpr char kInternalProperty[] = "kvxInternal";

int g_eventDepth = 0;

std::unordered_map<const QWidget*, OwnWindow*>& OwnWindows() {
    static std::unordered_map<const QWidget*, OwnWindow*> windows;
    return windows;
}

}  // namespace

OwnWindow::OwnWindow(QWidget* widget, IWindowSink* sink) : widget_(widget), sink_(sink) {
    OwnWindows()[widget] = this;
}

OwnWindow::~OwnWindow() {
    OwnWindows().erase(widget_);
}

OwnWindow* OwnWindow::Of(const QWidget* widget) {
    const auto found = OwnWindows().find(widget);
    return found == OwnWindows().end() ? nullptr : found->second;
}

void OwnWindow::Detach() {
    if (IWindowSink* sink = sink_) sink->OnWindowGone();
    sink_ = nullptr;
}

LRESULT OwnWindow::Send(UINT message, WPARAM wParam, LPARAM lParam) {
    return sink_ ? sink_->OnMessage(message, wParam, lParam) : 0;
}

bool OwnWindow::TakeMessage(QEvent* event) {
    if (event->type() != MessageEvent::kType) return false;
    const auto* const message = static_cast<MessageEvent*>(event);
    if (IsHeldBack(widget_)) {
        QCoreApplication::postEvent(
            widget_, new MessageEvent(message->message, message->wParam, message->lParam));
        return true;
    }
    Send(message->message, message->wParam, message->lParam);
    return true;
}

OwnWindow::EventScope::EventScope() {
    ++g_eventDepth;
}

OwnWindow::EventScope::~EventScope() {
    --g_eventDepth;
}

bool OwnWindow::EventScope::Active() {
    return g_eventDepth > 0;
}

void SetWindowId(QWidget* widget, UINT id) {
    widget->setProperty(kIdProperty, id);
}

UINT WindowId(const QWidget* widget) {
    return widget->property(kIdProperty).toUInt();
}

void SetInternal(QWidget* widget) {
    widget->setProperty(kInternalProperty, true);
}

bool IsInternal(const QWidget* widget) {
    return widget->property(kInternalProperty).toBool();
}

}  // namespace kvx::qt
