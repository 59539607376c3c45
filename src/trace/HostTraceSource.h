#pragma once
// The component's source of traces: the host of the module, which may come and go.

#include "trace/TraceSource.h"

namespace kvx {

class HostTraceSource final : public ITraceSource {
  public:
    IQOSTraceService* Service() override;
    bool HasTrace() override;
    // Without a host nothing happens.
    void BroadcastDisplayChanged(IViewSender* sender) override;
};

}  // namespace kvx
