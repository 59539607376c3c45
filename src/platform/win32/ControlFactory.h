#pragma once
// Makes the system's controls; their notifications reach the parent as WM_COMMAND.

#include "platform/win32/System.h"

namespace kvx::win32 {

// Any kind but Plain and Backdrop. Null when the system refuses.
win::HWND MakeControl(const WindowRequest& request, IWindowSink* sink);

}  // namespace kvx::win32
