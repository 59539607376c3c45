#pragma once
// Makes the toolkit's controls and turns their signals into WM_COMMAND of the parent.

#include "platform/Backend.h"

class QWidget;

namespace kvx::qt {

// Any kind but Plain and Backdrop. The parent owns it.
QWidget* MakeControl(const WindowRequest& request, QWidget* parent, IWindowSink* sink);

}  // namespace kvx::qt
