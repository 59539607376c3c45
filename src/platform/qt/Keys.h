#pragma once
// Keys and buttons of the toolkit as those of the platform layer.

#include <QKeyEvent>

#include "platform/base/Types.h"

namespace kvx::qt {

// VK_ code; 0 for a key that has none.
UINT VirtualKeyOf(const QKeyEvent& event);
// MK_ flags.
UINT MouseFlagsOf(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers);

}  // namespace kvx::qt
