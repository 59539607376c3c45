#pragma once
// Status bar of the component's frames.

#include <vector>

#include "platform/StatusBarCtrl.h"

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

  protected:
    const MessageMap& GetMessageMap() const override;
    int OnCreate(const CREATESTRUCT* create);

  private:
    void ShowPanes(int x, int spacing, const std::vector<CString>& texts);

    int charWidth_ = 0;
    int lineHeight_ = 0;
};
