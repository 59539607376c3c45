#pragma once
// A window message on its way through the toolkit: between modules of one process, or posted. Any
// widget may take part: handle the type in event(), set handled and result, and answer true.

#include <QEvent>

#include "platform/base/Types.h"

namespace kvx::qt {

class MessageEvent : public QEvent {
  public:
    // The same number in every module.
    static constexpr QEvent::Type kType = static_cast<QEvent::Type>(QEvent::User + 0x4B56);

    MessageEvent(UINT number, WPARAM first, LPARAM second, bool isPosted)
        : QEvent(kType), message(number), wParam(first), lParam(second), posted(isPosted) {}

    const UINT message;
    const WPARAM wParam;
    const LPARAM lParam;
    const bool posted;
    LRESULT result = 0;
    bool handled = false;
};

}  // namespace kvx::qt
