#pragma once
// A window instance fills a docking window of the host: the frame lies inside it, and the host's
// menus, toolbars and keys reach the frame through it.

#include "framework/DockingManager.h"
#include "framework/FrameworkServices.h"
#include "host/DebugInterfaces.h"
#include "host/Identifiers.h"
#include "host/WorkspaceStore.h"
#include "platform/drawing/Font.h"
#include "platform/windows/Wnd.h"

// Face and size of windows for which nothing else is set.
inline constexpr char kDefaultFace[] = "Courier New";
inline constexpr int kDefaultPoints = 11;
LOGFONT DefaultWindowFont();

// User message of the command sink: close the instance whose window handle is the first parameter.
inline constexpr UINT kMessageCloseInstance = WM_USER + 1;

class CKvxInstanceDataCtrl : public CWnd, public ICommandWindow {
  public:
    CKvxInstanceDataCtrl(IQHost* host, IDockingManager* docking);
    ~CKvxInstanceDataCtrl() override;

    virtual DWORD TestFlags(DWORD mask) const { return flags_ & mask; }
    virtual DWORD GetFlags() const { return flags_; }
    virtual void ChangeFlags(DWORD mask, bool set) {
        flags_ = set ? flags_ | mask : flags_ & ~mask;
    }
    virtual void SetFlags(DWORD flags) { flags_ = flags; }
    // Drops what the docking manager holds of this control.
    virtual void RemoveToolbars();
    virtual int RefreshData() { return 1; }
    virtual UINT GetOpenCommand() const = 0;
    virtual CString GetHelpKey() const = 0;
    virtual void OnDebuggerConnected() {}
    virtual void OnDebuggerDisconnected() {}
    virtual HWND GetFrameWindow() const = 0;
    // Hands an update hint to the view.
    virtual void UpdateView(LPARAM hint) = 0;
    // The view is the sender of a display-changed event with that datum.
    virtual bool IsSender(std::uintptr_t datum) const = 0;
    using CWnd::SetFont;
    virtual void SetFont(const CString& face, int points) = 0;
    // Colours are indexes into the named-colour table.
    virtual void SetColours(const CString& item, int text, int background) = 0;
    virtual void SaveSettings(IWorkspaceStore& store, const CString& prefix) = 0;
    virtual void LoadSettings(IWorkspaceStore& store, const CString& prefix) = 0;

    // The user changed a setting of the view since the last save or load.
    bool AreSettingsModified() const { return settingsModified_; }
    void SetSettingsModified(bool modified) { settingsModified_ = modified; }

    HWND CommandHandle() const override { return GetSafeHwnd(); }
    bool RouteCommand(UINT command) override { return OnCommand(command); }
    bool RouteUpdate(UINT command, CCmdUI& ui) override { return OnUpdateCommand(command, ui); }
    bool CloseRequested() override;
    CString HelpKey() const override { return GetHelpKey(); }

    // Which of the host's targets the window is about, as functions of the debugger take it: what
    // the host gave for kHostFrame, or null.
    IQUnknown* TargetContext() const { return hostFrame_; }

    // Live instance controls of the module.
    static int Count();

  protected:
    IQHost* Host() const { return host_; }
    IDockingManager* Docking() const { return docking_; }
    std::uint32_t MenuId() const { return menuId_; }
    std::uint32_t SecondaryId() const { return secondaryId_; }
    // The docking window that holds this control.
    HWND DockingWindow() const;

  private:
    DWORD flags_ = 0;
    IQHost* host_;
    IQUnknown* hostFrame_;
    std::vector<IQUnknown*> services_;
    IDockingManager* docking_;
    std::uint32_t menuId_ = 0;       // of menu and toolbar
    std::uint32_t secondaryId_ = 0;  // of further registrations
    bool settingsModified_ = false;
};

// Adds the debugger side, the window font, and the commands that every window has.
class CKvxDebugInstanceDataCtrl : public CKvxInstanceDataCtrl, public CDebugInterfaces {
  public:
    CKvxDebugInstanceDataCtrl(IQHost* host, IDockingManager* docking);

    void SetFont(const CString& face, int points) override;

  protected:
    const MessageMap& GetMessageMap() const override;
    int OnCreate(const CREATESTRUCT* create);
    // Items are as high as the window font.
    void OnMeasureItem(int control, MEASUREITEMSTRUCT* item);
    CFont& WindowFont() { return font_; }
    // Hands the window font to the frame.
    virtual void ApplyFont() = 0;

    void OnToolbarDisplay();
    void OnUpdateToolbarDisplay(CCmdUI& ui);
    void OnCustomizeToolbar();
    void OnUpdateCustomizeToolbar(CCmdUI& ui);
    void OnAllowDocking();
    void OnUpdateAllowDocking(CCmdUI& ui);
    void OnHide();
    void OnUpdateHide(CCmdUI& ui);

  private:
    CFont font_;
};
