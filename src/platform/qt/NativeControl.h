#pragma once
// A control of the toolkit that also takes messages.

#include "platform/qt/OwnWindow.h"

namespace kvx::qt {

template <class Base>
class NativeControl final : public Base, public OwnWindow {
  public:
    NativeControl(QWidget* parent, IWindowSink* sink) : Base(parent), OwnWindow(this, sink) {}
    ~NativeControl() override { Detach(); }

  protected:
    bool event(QEvent* event) override {
        const EventScope scope;
        return TakeMessage(event) || Base::event(event);
    }
};

}  // namespace kvx::qt
