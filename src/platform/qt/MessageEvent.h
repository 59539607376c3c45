#pragma once
// A posted window message on its way through the toolkit's queue.

#include <QEvent>

#include "platform/base/Types.h"

namespace kvx::qt {

class MessageEvent : public QEvent {
  public:
    static constexpr QEvent::Type kType = static_cast<QEvent::Type>(QEvent::User + 0x4B56);

    MessageEvent(UINT number, WPARAM first, LPARAM second)
        : QEvent(kType), message(number), wParam(first), lParam(second) {}

    const UINT message;
    const WPARAM wParam;
    const LPARAM lParam;
};

}  // namespace kvx::qt
