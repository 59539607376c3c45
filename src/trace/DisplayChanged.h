#pragma once
// The event that makes every view other than its sender redraw.

#include "trace/Progress.h"

namespace kvx {

// Without a host nothing happens. A null sender tells every view.
void BroadcastDisplayChanged(IViewSender* sender);

}  // namespace kvx
