#pragma once
// The displayed time range of the OS Trace window, ours: the component offers it as a service
// (kvx::host::kOSTraceRange) from its start-up on, so that a picture of an exact range can be made.

#include "host/Host.h"

namespace kvx::host {

inline constexpr GUID kOSTraceRange = MakeGuid("{5E27C4B9-3A8D-4C16-9F70-D41B6A0E82C3}");

class IQOSTraceRange : public IQUnknown {
  public:
    // Shows exactly the times start..end (counts of the trace clock) across the chart of the open
    // OS Trace window, decoding what that needs. E_FAIL when no such window or no trace is open or
    // decoding was stopped; E_INVALIDARG unless start < end and both lie within the trace.
    virtual HRESULT KVX_CALL SetDisplayRange(double start, double end) = 0;

  protected:
    ~IQOSTraceRange() = default;
};

}  // namespace kvx::host
