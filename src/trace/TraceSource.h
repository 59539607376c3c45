#pragma once
// Where the window-free core has its trace from, and whom it tells of changes.

#include "trace/Progress.h"

class IQOSTraceService;

namespace kvx {

class ITraceSource {
  public:
    // The service as it is now; null: there is none. It is asked for anew by every operation, and
    // kept by none.
    virtual IQOSTraceService* Service() = 0;
    // Whether there is a trace to open.
    virtual bool HasTrace() = 0;
    // Has every view but the sender's drawn anew; a null sender: every view.
    virtual void BroadcastDisplayChanged(IViewSender* sender) = 0;

  protected:
    ~ITraceSource() = default;
};

}  // namespace kvx
