#pragma once
// The command sink of a connected component: owns the shared trace data and the windows, adds menus
// and the toolbar "RTOS" to the host, keeps font and colours, and takes part in workspaces.

#include <map>

#include "framework/CommandSink.h"
#include "framework/WSClient.h"
#include "host/OSTraceRange.h"
#include "host/Services.h"
#include "trace/HostTraceSource.h"
#include "trace/TraceData.h"

class CKvxOSTraceInstanceCtrl;

class CUiDebugCommandSink : public CKvxFormatViewCtrl, public CDebugInterfaces {
  public:
    CUiDebugCommandSink(IQHost* host, IDockingManager* docking)
        : CKvxFormatViewCtrl(host, docking), CDebugInterfaces(host) {}
};

class COSTraceView;

class CKvxOSTraceDataCommandSink : public CUiDebugCommandSink,
                                   public CWSClient2,
                                   public kvx::host::NoRefCount<IQEOSTraceWindow>,
                                   public kvx::host::NoRefCount<kvx::host::IQOSTraceRange> {
  public:
    CKvxOSTraceDataCommandSink(IQHost* host, IDockingManager* docking);
    ~CKvxOSTraceDataCommandSink() override;

    // Hands an update hint to every window; a display-changed hint skips the view that sent it.
    void UpdateWindows(LPARAM hint, std::uintptr_t sender);

    void CloseAllInstances() override;
    int CloseInstance(HWND window, LPARAM argument) override;
    int HideInstance(HWND window) override;

    HRESULT KVX_CALL QueryInterface(const GUID& id, void** out) override;
    HRESULT KVX_CALL IsOpen(std::uint16_t* flag) override;
    HRESULT KVX_CALL SetDisplayRange(double start, double end) override;
    HRESULT KVX_CALL GetPosition(kvx::host::OSTracePosition* position) override;
    HRESULT KVX_CALL SetPosition(const kvx::host::OSTracePosition* position) override;
    HRESULT KVX_CALL GetName(BSTR* name) override;
    HRESULT KVX_CALL GetFont(BSTR* face, std::int32_t* points) override;
    HRESULT KVX_CALL SetFont(BSTR face, std::int32_t points) override;
    HRESULT KVX_CALL WorkspaceOpened(std::uintptr_t a, std::uintptr_t b, BSTR workspace,
                                     std::uintptr_t d) override;
    HRESULT KVX_CALL WorkspaceSaving(std::uintptr_t a, std::uintptr_t b, std::uintptr_t d) override;
    HRESULT KVX_CALL QueryModified(std::uintptr_t a, std::uintptr_t b, std::uintptr_t c,
                                   std::int32_t* modified) override;
    HRESULT KVX_CALL SetColours(BSTR item, std::int32_t foreground,
                                std::int32_t background) override;

  protected:
    const MessageMap& GetMessageMap() const override;
    int OnCreate(const CREATESTRUCT* create);
    LRESULT OnCloseInstance(WPARAM window, LPARAM argument);
    void OnOpenOSTrace();
    void OnUpdateOpenOSTrace(CCmdUI& ui);
    void OnOpenOSAnalyze();
    void OnUpdateOpenOSAnalyze(CCmdUI& ui);

  private:
    // The windows of one kind.
    struct WindowKind {
        CString plainName;  // of docking windows outside any workspace
        CString baseName;   // with the names of the open workspace
        UINT titleString = 0;
        CString countKey;            // in the workspace: how many windows are open
        CString settingsPrefix;      // in the workspace: of one window
        std::vector<CString> names;  // docking-window names, also of windows that are gone
        std::vector<CKvxDebugInstanceDataCtrl*> controls;
    };
    // Of the first OS Trace window, connected; null when there is none.
    COSTraceView* TraceView();
    // Shows what change made of its display.
    template <class Change>
    HRESULT ChangeDisplay(Change change);
    void ReadProperties();
    std::int32_t ReadNumber(const char* key, std::int32_t fallback) const;
    void Open(WindowKind& kind);
    void ForgetLostWindows();
    static bool HasWindow(const WindowKind& kind);
    HWND FindDocking(const WindowKind& kind, const CString& name) const;
    std::unique_ptr<CKvxInstanceDataCtrl> NewControl(const WindowKind& kind);
    void FillDocking(WindowKind& kind, HWND docking, const CString& name);
    // False when the window does not come into being; it may throw, too.
    bool AddControl(WindowKind& kind, HWND docking, const CString& name);
    void Forget(const CKvxInstanceDataCtrl& control);
    bool MayOpen(const WindowKind& kind,
                 const std::vector<CKvxInstanceDataCtrl*>& candidates) const;
    template <class Action>
    void ForEachWindow(Action action) {
        for (CKvxDebugInstanceDataCtrl* control : traceKind_.controls) action(*control);
        for (CKvxDebugInstanceDataCtrl* control : analyzeKind_.controls) action(*control);
    }
    void Restore(WindowKind& kind, IWorkspaceStore& store);
    void Reopen(WindowKind& kind, const CString& name);
    void Save(const WindowKind& kind, IWorkspaceStore& store) const;

    // A workspace that claims more windows is damaged.
    static constexpr std::int32_t kMostWindows = 64;

    WindowKind traceKind_;
    WindowKind analyzeKind_;
    std::map<const CKvxInstanceDataCtrl*, CString> nameOfControl_;
    kvx::HostTraceSource source_;
    COSTraceData data_{source_};
    IQPropertyStore* properties_ = nullptr;
    std::uint32_t menuId_ = 0;  // of the menus and buttons in the host; 0: none
    CString workspace_;         // the host's text for the open workspace
    bool modified_ = false;     // windows were opened or closed since the workspace was saved
    CString face_;
    int points_ = 0;
};
