#pragma once
// Accelerators of a component as key sequences of the toolkit.

#include <QKeySequence>

#include "host/DockingHost.h"

namespace kvx::desktop {

// Empty for a key code that no keyboard key stands for. Codes are the platform's virtual-key codes;
// letters and digits are their capital ASCII codes, and characters that no virtual key is named
// after ("?") are themselves.
QKeySequence KeySequenceOf(const Accelerator& accelerator);

}  // namespace kvx::desktop
