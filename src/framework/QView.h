#pragma once
// A view inside a dockable frame window.

#include "host/WorkspaceStore.h"
#include "platform/windows/View.h"

class CQFrameWnd;

class KVX_EXPORT CQView : public CView {
  public:
    static const CRuntimeClass kClass;
    const CRuntimeClass* GetRuntimeClass() const override { return &kClass; }

    // Takes the parent as the frame where it is one, and its parent as the owner.
    using CWnd::Create;
    bool Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) override;

    // Requests that the frame passes on. Settings are stored under keys that begin with the prefix;
    // 0 is success.
    virtual int SaveSettings(IWorkspaceStore& store, const CString& prefix);
    virtual int LoadSettings(IWorkspaceStore& store, const CString& prefix);
    virtual void SetViewFont(CFont* font);
    virtual void SetViewColors(const CString& item, COLORREF text, COLORREF background);

  protected:
    CWnd* Owner() const { return owner_; }
    CQFrameWnd* Frame() const { return frame_; }

  private:
    CWnd* owner_ = nullptr;        // the window instance control
    CQFrameWnd* frame_ = nullptr;  // the parent, or null
};
