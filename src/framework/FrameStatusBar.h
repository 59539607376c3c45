#pragma once
// Status bar of the component's frames. A text that has no room shows whole in a tip, with those
// behind it.

#include <memory>
#include <vector>

#include "framework/TipWindow.h"
#include "platform/controls/StatusBarCtrl.h"

class CFrameStatusBar : public CStatusBarCtrl {
  public:
    using CStatusBarCtrl::Create;
    virtual bool Create(CWnd* parent, UINT id, bool sizeGrip);
    // Width 0; the height that the bar wants.
    virtual SIZE GetToFitSize();

    // Shows the texts side by side, each pane as wide as its text.
    void SetPanes(const std::vector<CString>& texts);
    // One pane; it is wider than its text by the bar's vertical border too.
    void SetPane(const CString& text);
    int CharWidth() const { return charWidth_; }
    // Null while none is shown.
    const CTipWindow* Tip() const { return tip_.get(); }

  protected:
    const MessageMap& GetMessageMap() const override;
    int OnCreate(const CREATESTRUCT* create);
    void OnMouseMove(UINT flags, CPoint point);
    LRESULT OnMouseGone(WPARAM, LPARAM);
    void OnDestroy();

  private:
    void ShowPanes(int x, const std::vector<CString>& texts);
    void HideTip();

    std::unique_ptr<CTipWindow> tip_;
    int charWidth_ = 0;
    int lineHeight_ = 0;
};
