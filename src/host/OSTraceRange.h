#pragma once
// Where the OS Trace window stands in its trace, ours: the component offers it as a service
// (kvx::host::kOSTraceRange) from its start-up on, so that a host can make a picture of an exact
// range, and can bring back what its user had before the eyes.

#include "host/Host.h"

namespace kvx::host {

inline constexpr GUID kOSTraceRange = MakeGuid("{5E27C4B9-3A8D-4C16-9F70-D41B6A0E82C3}");

// Times are counts of the trace clock; markers: 0 where one is not placed.
struct OSTracePosition {
    double displayStart = 0;
    double displayEnd = 0;
    double gridTime = 0;
    double startMarker = 0;
    double endMarker = 0;
    double indicator = 0;
    friend bool operator==(const OSTracePosition&, const OSTracePosition&) = default;
};

class IQOSTraceRange : public IQUnknown {
  public:
    // Shows exactly the times start..end (counts of the trace clock) across the chart of the open
    // OS Trace window, decoding what that needs. E_FAIL when no such window or no trace is open or
    // decoding was stopped; E_INVALIDARG unless start < end and both lie within the trace.
    virtual HRESULT KVX_CALL SetDisplayRange(double start, double end) = 0;
    // E_FAIL when no such window or no trace is open.
    virtual HRESULT KVX_CALL GetPosition(OSTracePosition* position) = 0;
    // Shows the range, and puts each marker that is placed on the first event at or after its
    // time. Fails as SetDisplayRange does; also E_INVALIDARG when a marker lies outside the trace.
    virtual HRESULT KVX_CALL SetPosition(const OSTracePosition* position) = 0;

  protected:
    ~IQOSTraceRange() = default;
};

}  // namespace kvx::host
