#pragma once
// Moves several windows in one step.

#include "platform/base/Types.h"

using HDWP = struct DeferredPositions*;
// Null is never answered. The batch is freed by EndDeferWindowPos.
HDWP BeginDeferWindowPos(int windows);
// flags: SWP_ (platform/windows/Wnd.h). Answers the batch.
HDWP DeferWindowPos(HDWP batch, HWND window, int x, int y, int width, int height, UINT flags);
bool EndDeferWindowPos(HDWP batch);
