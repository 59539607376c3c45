#pragma once
// Base of the component's frame windows: a child window that owns the display font, creates its
// view, passes requests of the window instance on to it, and routes dropped files.

#include "framework/QView.h"
#include "platform/drawing/Font.h"

class CQFrameWnd : public CWnd {
  public:
    using CWnd::Create;
    bool Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) override;

    virtual void GetWindowTitle(CString& title) const = 0;
    virtual void GetDataName(CString& name) const = 0;
    virtual LRESULT DropFilesToView(HDROP drop);
    virtual int UpdateView(LPARAM hint) = 0;
    virtual int RefreshView() = 0;
    virtual int SaveSettings(IWorkspaceStore& store, const CString& prefix) = 0;
    virtual int LoadSettings(IWorkspaceStore& store, const CString& prefix) = 0;
    virtual void SetViewFont(CFont* font) = 0;
    virtual void SetViewColors(const CString& item, COLORREF text, COLORREF background) = 0;
    // A view of the class as child of that id, after its initial update; null when it cannot be
    // made.
    virtual CQView* CreateView(const CRuntimeClass* viewClass, UINT id);

    // Commands are the view's first.
    bool OnCmdMsg(UINT id, UINT code, CCmdUI* ui) override;

    // Copies the font: the caller's is not kept.
    void SetDisplayFont(const CFont& font);
    CFont* GetDisplayFont() { return &displayFont_; }
    void ForwardViewColors(const CString& item, COLORREF text, COLORREF background) {
        SetViewColors(item, text, background);
    }

  protected:
    const MessageMap& GetMessageMap() const override;
    int OnCreate(const CREATESTRUCT* create);
    void OnSize(UINT type, int cx, int cy);
    void OnDropFiles(HDROP drop);
    LRESULT OnSetFocus(WPARAM, LPARAM);

    // Null before it is made and after its window has gone.
    CQView* View() const { return FromHandlePermanent(viewWindow_) == view_ ? view_ : nullptr; }
    CWnd* Owner() const { return owner_; }
    void SetView(CQView* view);

  private:
    CQView* view_ = nullptr;  // deletes itself with its window
    HWND viewWindow_ = nullptr;
    CWnd* owner_ = nullptr;  // the window instance control
    CFont displayFont_;
};
