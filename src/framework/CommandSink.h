#pragma once
// Bases of the command sink: the hidden window of a component that owns its window instances,
// answers the host's format dialog and holds the debugger side.

#include <vector>

#include "framework/FrameworkServices.h"
#include "framework/InstanceDataCtrl.h"
#include "host/FormatViewClient.h"
#include "host/NoRefCount.h"

class CUiCommandSink : public CWnd, public ICommandWindow {
  public:
    CUiCommandSink(IQHost* host, IDockingManager* docking);

    // Drops and deletes every window instance.
    virtual void CloseAllInstances();
    virtual void RefreshAllInstances();
    // 1: the instance of that window is closed and deleted; 0: there is none.
    virtual int CloseInstance(HWND window, LPARAM argument);
    // 1: hidden.
    virtual int HideInstance(HWND window);
    virtual void OnDebuggerConnected();
    virtual void OnDebuggerDisconnected();

    HWND CommandHandle() const override { return GetSafeHwnd(); }
    bool RouteCommand(UINT command) override { return OnCommand(command); }
    bool RouteUpdate(UINT command, CCmdUI& ui) override { return OnUpdateCommand(command, ui); }
    bool CloseRequested() override { return true; }
    CString HelpKey() const override { return {}; }

  protected:
    IQHost* Host() const { return host_; }
    IDockingManager* Docking() const { return docking_; }
    // In opening order; owned.
    const std::vector<std::unique_ptr<CKvxInstanceDataCtrl>>& Instances() const {
        return instances_;
    }
    // Takes the instance over, unless it throws.
    void AddInstance(std::unique_ptr<CKvxInstanceDataCtrl>&& instance);
    CKvxInstanceDataCtrl* FindInstance(HWND window) const;
    // Deletes the instances whose docking window went without a word, and their window with it.
    void DropLostInstances();

  private:
    IQHost* host_;
    std::vector<IQUnknown*> services_;
    IDockingManager* docking_;
    std::vector<std::unique_ptr<CKvxInstanceDataCtrl>> instances_;
};

// Adds font and colours of the windows, as the host's format dialog sets them.
class CKvxFormatViewCtrl : public CUiCommandSink,
                           public kvx::host::NoRefCount<IQFormatViewClient2> {
  public:
    CKvxFormatViewCtrl(IQHost* host, IDockingManager* docking);

    HRESULT KVX_CALL Reserved2() override { return S_OK; }
    HRESULT KVX_CALL Reserved3() override { return S_OK; }
    HRESULT KVX_CALL GetItemNames(IQFormatItemList* items) override;
    HRESULT KVX_CALL GetCurrentColours(BSTR*, std::int32_t*, std::int32_t*) override {
        return E_FAIL;
    }
    HRESULT KVX_CALL SetColours(BSTR item, std::int32_t foreground,
                                std::int32_t background) override;
    HRESULT KVX_CALL SetFont2(BSTR face, std::int32_t points) override {
        return Client()->SetFont(face, points);
    }
    HRESULT KVX_CALL SetTextColours(std::int32_t foreground, std::int32_t background) override;
    HRESULT KVX_CALL SetSelectedTextColours(std::int32_t foreground,
                                            std::int32_t background) override;
    HRESULT KVX_CALL Reserved12() override { return S_OK; }
    HRESULT KVX_CALL GetItemColours(BSTR, std::int32_t*, std::int32_t*) override { return E_FAIL; }

  protected:
    // The interface, under which operations are called that share a name with the window's.
    IQFormatViewClient2* Client() { return this; }

    // A pair of indexes into the named-colour table.
    struct ColourPair {
        std::int32_t foreground;
        std::int32_t background;
    };
    ColourPair text_;
    ColourPair selectedText_;
    CString currentItem_;

  private:
    std::vector<CString> items_;
};
