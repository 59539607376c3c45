#pragma once
// What a sub-command gives the window-free core as its source: one trace service of its own. There
// is no view to tell of changes.

#include "trace/TraceSource.h"
#include "workbench/service/TraceService.h"

namespace kvx::cli {

class RecordingSource final : public ITraceSource {
  public:
    // Borrows the service.
    explicit RecordingSource(service::TraceService& service) : service_(service) {}

    IQOSTraceService* Service() override { return &service_; }
    bool HasTrace() override { return service_.GetRecording() != nullptr; }
    void BroadcastDisplayChanged(IViewSender*) override {}

  private:
    service::TraceService& service_;
};

}  // namespace kvx::cli
