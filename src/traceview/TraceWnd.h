#pragma once
// The frame of the OS Trace window.

#include "framework/StatusFrameWnd.h"

class COSTraceView;

class COSTraceWnd : public CStatusFrameWnd {
  public:
    void GetWindowTitle(CString& title) const override;
    int RefreshView() override;
    COSTraceView* TraceView() const;

  protected:
    const CRuntimeClass* ViewClass() const override;
    void OnFrameCreated() override;
};
