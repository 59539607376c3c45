#pragma once
// The frame of the OS Analyze window.

#include "framework/StatusFrameWnd.h"

class COSAnalyzeView;

class COSAnalyzeWnd : public CStatusFrameWnd {
  public:
    void GetWindowTitle(CString& title) const override;
    int RefreshView() override { return 0; }
    COSAnalyzeView* AnalyzeView() const;

  protected:
    const CRuntimeClass* ViewClass() const override;
    void OnFrameCreated() override;
};
