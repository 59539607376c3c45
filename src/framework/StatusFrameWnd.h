#pragma once
// A frame with a status bar above its view, laid out by the window layout manager.

#include "framework/FrameStatusBar.h"
#include "framework/QFrameWnd.h"
#include "framework/WinMgr.h"

inline constexpr UINT kFirstPane = 59648;      // id of a frame's view, and of the frame itself
inline constexpr UINT kStatusBarPane = 59649;  // id of its status bar

class CStatusFrameWnd : public CQFrameWnd {
  public:
    CStatusFrameWnd();
    // Does nothing before the status bar exists.
    void ShowStatusBar(bool show);
    // Nothing without a status bar.
    void SetStatusTexts(const std::vector<CString>& texts);
    void SetStatusText(const CString& text);

    void GetDataName(CString& name) const override;
    int UpdateView(LPARAM hint) override;
    int SaveSettings(IWorkspaceStore& store, const CString& prefix) override;
    int LoadSettings(IWorkspaceStore& store, const CString& prefix) override;
    void SetViewFont(CFont* font) override;
    void SetViewColors(const CString& item, COLORREF text, COLORREF background) override;

    // Lays out again, as after a change of size.
    void LayOut();

  protected:
    const MessageMap& GetMessageMap() const override;
    int OnCreate(const CREATESTRUCT* create);
    void OnSize(UINT type, int cx, int cy);
    void OnGetMinMaxInfo(MINMAXINFO* info);
    bool OnEraseBkgnd(CDC* dc);
    LRESULT OnWinMgr(WPARAM id, LPARAM notify);

    virtual const CRuntimeClass* ViewClass() const = 0;
    // After view and status bar exist: the view decides whether the bar is shown.
    virtual void OnFrameCreated() = 0;

  private:
    WINRECT table_[5];
    CWinMgr layout_;
    CFrameStatusBar statusBar_;
    bool statusBarShown_ = false;
};
