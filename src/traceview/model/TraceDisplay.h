#pragma once
// The trace as a window shows it: the viewport over the shared objects of the component. What the
// display comes to show is decoded before; when the user stops that, the display stays.

#include "host/OSTraceRange.h"
#include "trace/TraceData.h"
#include "traceview/model/ChartViewport.h"
#include "traceview/model/KeptItems.h"
#include "traceview/model/LineSelection.h"

class IQOSTraceService;

class TraceDisplay {
  public:
    // Borrows both. The sender is the view that is named in display-changed events.
    TraceDisplay(COSTraceData& shared, IViewSender& sender) : data(shared), sender_(sender) {}

    bool IsOpen() const { return data.engine.IsValid(); }
    // Opens the trace that is there, placed for its first look; false when there is none.
    bool Open();
    // resetService 1 also discards the service's decoded data.
    void Close(int resetService);

    // False: the user stopped the decoding that it needs.
    bool GoTo(const ChartViewport::Display& display);
    // Answers how far it went.
    double ScrollBy(double delta);
    // Brings the indicator into the middle when it is out of sight.
    void CentreIndicator();
    // Tables and analyses follow records that were decoded.
    void ReloadAfterDecoding();

    // After another order of lines, or other lines that are shown.
    void LoadLines();
    // The same; the analyses follow. keepSort: their rows stay sorted as they were.
    void RebuildLines(bool keepSort);
    // Moves a line before the target line.
    void MoveLine(int source, int target);

    // A marker is dragged; the analyses follow with the drop alone. A drag that is cancelled
    // leaves the marker where it was.
    // True: the marker has jumped to an event under column x.
    bool DragMarker(int which, int x);
    void DropMarkers();
    void CancelMarkerDrag(int which);

    // See kvx::host::IQOSTraceRange.
    HRESULT SetDisplayRange(double start, double end);
    HRESULT GetPosition(kvx::host::OSTracePosition& position) const;
    HRESULT SetPosition(const kvx::host::OSTracePosition& position);

    COSTraceData& data;
    ChartViewport viewport;
    LineSelection selection;
    kvx::KeptItems kept;  // of the latest paint

  private:
    bool DecodeUpTo(double time);
    bool IsInTrace(double time) const;
    std::optional<ChartViewport::Display> Within(double start, double end) const;
    void PlaceMarkers();
    void SetMarkers(double start, double end, double indicator);

    IViewSender& sender_;
    bool rebuildDue_ = false;  // records were decoded while a range marker was dragged
};
