#pragma once
// The viewer's main window: menu bar and toolbar, the panes side by side with a bar between them
// that is dragged, and the status line.

#include "framework/SizerBar.h"
#include "framework/WinMgr.h"
#include "platform/controls/StatusBarCtrl.h"
#include "viewer/MenuStrip.h"
#include "viewer/ViewerDocking.h"

namespace kvx::viewer {

class ViewerWindow : public CWnd {
  public:
    ViewerWindow();
    ~ViewerWindow() override;

    // The user dropped files.
    std::function<void(const CString& path)> onDrop;
    // The user did something, or an event came: what is shown of the state may be old.
    std::function<void()> onUpdate;
    // The user closes the window.
    std::function<void()> onClose;

    std::vector<CommandKey> keys;  // that hold in the whole window

    bool CreateMain(const RECT& place);
    ViewerDocking& Docking() { return docking_; }
    // Prompts and progress; the right part tells of the recording.
    void ShowStatus(const CString& text);
    void ShowRecordingStatus(const CString& text);
    CString Status(int part) const { return status_.GetText(part); }
    // Asks the component for the states of the toolbars' commands, after what is at work.
    void UpdateSoon();

    bool PreTranslateMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  protected:
    const MessageMap& GetMessageMap() const override;

  private:
    void OnSize(UINT type, int cx, int cy);
    bool OnEraseBkgnd(CDC* dc);
    void OnClose();
    void OnDropFiles(HDROP drop);
    LRESULT OnWinMgr(WPARAM id, LPARAM notify);
    LRESULT OnUpdate(WPARAM, LPARAM);
    LRESULT OnSetFocus(WPARAM, LPARAM);
    void ConnectDocking();
    void LayOut();
    void LayOutPanes(const CRect& area);
    void LayOutStatus();
    bool OpenMenu(UINT key);

    ViewerDocking docking_;
    MenuStrip menuStrip_;
    CStatusBarCtrl status_;
    CString prompt_;
    CString recording_;
    WINRECT table_[6];
    CWinMgr layout_;
    CSizerBar bar_;
    bool updating_ = false;  // an update is on its way
};

}  // namespace kvx::viewer
