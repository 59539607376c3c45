#pragma once
// What the instances of both kinds of window have in common: the frame inside, menu and toolbar of
// the resource library, and commands that are the view's.

#include <span>

#include "framework/InstanceDataCtrl.h"
#include "framework/StatusFrameWnd.h"

class IViewSender;

// What tells one kind of window from the other.
struct WindowTraits {
    UINT openCommand;
    UINT menu;
    UINT toolbar;
    std::span<const UINT> optionalCommands;  // that the user may take off the toolbar first
    const char* settingsPrefix;
    const char* helpKey;
};

class CFrameInstanceCtrl : public CKvxDebugInstanceDataCtrl {
  public:
    // The frame is the derived object's; traits outlive it.
    CFrameInstanceCtrl(IQHost* host, IDockingManager* docking, CStatusFrameWnd& frame,
                       const WindowTraits& traits);

    int RefreshData() override { return frame_.RefreshView(); }
    UINT GetOpenCommand() const override { return traits_.openCommand; }
    CString GetHelpKey() const override { return traits_.helpKey; }
    HWND GetFrameWindow() const override { return frame_.GetSafeHwnd(); }
    void UpdateView(LPARAM hint) override { frame_.UpdateView(hint); }
    bool IsSender(std::uintptr_t datum) const override;
    using CKvxDebugInstanceDataCtrl::SetFont;
    void SetColours(const CString& item, int text, int background) override;
    void SaveSettings(IWorkspaceStore& store, const CString& prefix) override;
    void LoadSettings(IWorkspaceStore& store, const CString& prefix) override;

    bool OnCmdMsg(UINT id, UINT code, CCmdUI* ui) override;

  protected:
    const MessageMap& GetMessageMap() const override;
    int OnCreate(const CREATESTRUCT* create);
    void OnSize(UINT type, int cx, int cy);
    LRESULT OnSetFocus(WPARAM, LPARAM);
    void ApplyFont() override { frame_.SetDisplayFont(WindowFont()); }

    // The view as it names itself in display-changed events; null without a view.
    virtual const IViewSender* Sender() const = 0;
    // Hands the shared objects to the view.
    virtual void ConnectView() = 0;
    // Further groups of resources, between menu and toolbar.
    virtual void RegisterGroups(IDockingManager&) {}

  private:
    void RegisterWithDocking();

    CStatusFrameWnd& frame_;
    const WindowTraits& traits_;
    int textColour_;
    int backgroundColour_;
};
