#pragma once
// The window instance of an OS Analyze window.

#include "analyze/AnalyzeWnd.h"
#include "sink/FrameInstanceCtrl.h"

struct COSTraceData;

class CKvxOSAnalyzeInstanceCtrl : public CFrameInstanceCtrl {
  public:
    // The shared objects are the command sink's.
    CKvxOSAnalyzeInstanceCtrl(IQHost* host, IDockingManager* docking, COSTraceData& data);

    COSAnalyzeWnd& Frame() { return frame_; }

  protected:
    const MessageMap& GetMessageMap() const override;
    const IViewSender* Sender() const override;
    void ConnectView() override;
    void OnSave();

  private:
    COSTraceData& data_;
    COSAnalyzeWnd frame_;
};
