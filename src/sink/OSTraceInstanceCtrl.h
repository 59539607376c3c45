#pragma once
// The window instance of an OS Trace window.

#include "sink/FrameInstanceCtrl.h"
#include "traceview/TraceWnd.h"

struct COSTraceData;

class CKvxOSTraceInstanceCtrl : public CFrameInstanceCtrl {
  public:
    // The shared objects are the command sink's.
    CKvxOSTraceInstanceCtrl(IQHost* host, IDockingManager* docking, COSTraceData& data);

    COSTraceWnd& Frame() { return frame_; }

  protected:
    const IViewSender* Sender() const override;
    void ConnectView() override;
    void RegisterGroups(IDockingManager& docking) override;

  private:
    COSTraceData& data_;
    COSTraceWnd frame_;
};
