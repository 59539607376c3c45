#pragma once
// One docking window of the viewer: a title, a toolbar, and the control that a component puts
// there.

#include "viewer/Keys.h"
#include "viewer/ToolStrip.h"

namespace kvx::viewer {

class Pane : public CWnd {
  public:
    Pane(CString name, CString title) : name_(std::move(name)), title_(std::move(title)) {}

    // The user pressed the close button.
    std::function<void()> onClose;
    // The user gave a command by a key.
    std::function<void(const Command&)> onCommand;

    IQCommandTarget* target = nullptr;  // of the control; null: none fills the pane
    std::vector<CommandKey> keys;

    bool CreateIn(CWnd& parent, UINT id);
    const CString& Name() const { return name_; }
    const CString& Title() const { return title_; }
    ToolStrip& Toolbar() { return toolbar_; }
    // Null takes it out.
    void SetControl(HWND control);
    // Hidden in the layout, whatever is around it.
    void SetHidden(bool hidden);
    bool IsHidden() const { return hidden_; }
    void ShowToolbar(bool show);
    bool IsToolbarShown() const { return toolbarShown_; }
    // The keyboard is in it.
    void SetActive(bool active);
    void FocusControl();

    bool PreTranslateMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  protected:
    const MessageMap& GetMessageMap() const override;

  private:
    void OnPaint();
    void OnSize(UINT type, int cx, int cy);
    void OnLButtonDown(UINT flags, CPoint point);
    LRESULT OnSetFocus(WPARAM, LPARAM);
    void LayOut();
    RECT CloseBox() const;

    const CString name_;
    const CString title_;
    ToolStrip toolbar_;
    HWND control_ = nullptr;
    bool hidden_ = true;
    bool toolbarShown_ = true;
    bool active_ = false;
};

}  // namespace kvx::viewer
