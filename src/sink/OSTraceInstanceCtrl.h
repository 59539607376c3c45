#pragma once
// The window instance of an OS Trace window.

#include "framework/InstanceDataCtrl.h"
#include "traceview/TraceWnd.h"

struct COSTraceData;

class CKvxOSTraceInstanceCtrl : public CKvxDebugInstanceDataCtrl {
  public:
    // The shared objects are the command sink's.
    CKvxOSTraceInstanceCtrl(IQHost* host, IDockingManager* docking, COSTraceData& data);

    int RefreshData() override { return frame_.RefreshView(); }
    UINT GetOpenCommand() const override;
    CString GetHelpKey() const override { return "OSTrace.chm>F1HelpWindow"; }
    HWND GetFrameWindow() const override { return frame_.GetSafeHwnd(); }
    void UpdateView(LPARAM hint) override { frame_.UpdateView(hint); }
    bool IsSender(std::uintptr_t datum) const override;
    using CKvxDebugInstanceDataCtrl::SetFont;
    void SetColours(const CString& item, int text, int background) override;
    void SaveSettings(IWorkspaceStore& store, const CString& prefix) override;
    void LoadSettings(IWorkspaceStore& store, const CString& prefix) override;

    bool OnCmdMsg(UINT id, UINT code, CCmdUI* ui) override;
    COSTraceWnd& Frame() { return frame_; }

  protected:
    const MessageMap& GetMessageMap() const override;
    int OnCreate(const CREATESTRUCT* create);
    void OnSize(UINT type, int cx, int cy);
    void ApplyFont() override { frame_.SetDisplayFont(WindowFont()); }

  private:
    void RegisterWithDocking();

    COSTraceData& data_;
    int textColour_;
    int backgroundColour_;
    COSTraceWnd frame_;
};
