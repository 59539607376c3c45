#pragma once
// What every widget made here adds to its toolkit class: the sink of its messages, and a place in
// the list of these widgets.

#include <QWidget>

#include "platform/Backend.h"

namespace kvx::qt {

class OwnWindow {
  public:
    // The widget is not complete yet; it is only remembered.
    OwnWindow(QWidget* widget, IWindowSink* sink);
    virtual ~OwnWindow();
    OwnWindow(const OwnWindow&) = delete;
    OwnWindow& operator=(const OwnWindow&) = delete;

    // Null when the widget was not made here.
    static OwnWindow* Of(const QWidget* widget);

    IWindowSink* Sink() const { return sink_; }
    // Tells the sink that the window goes, once. Derived destructors call it first.
    void Detach();
    // 0 without a sink.
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    // Takes a message that arrives as an event; true when the event was one.
    bool TakeMessage(QEvent* event);

    // While any widget made here handles an event, none may be deleted.
    class EventScope {
      public:
        EventScope();
        ~EventScope();
        EventScope(const EventScope&) = delete;
        EventScope& operator=(const EventScope&) = delete;
        static bool Active();
    };

  private:
    QWidget* widget_;
    IWindowSink* sink_;
};

// The window's id among its siblings; widgets of the toolkit's own can have one too.
void SetWindowId(QWidget* widget, UINT id);
UINT WindowId(const QWidget* widget);

// Widgets that are no windows to the layer above: scroll bars, and windows that are destroyed but
// cannot be deleted yet.
void SetInternal(QWidget* widget);
bool IsInternal(const QWidget* widget);

}  // namespace kvx::qt
