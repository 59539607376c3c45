#pragma once
// The standard colour picker.

#include "platform/windows/Wnd.h"

class CColorDialog {
  public:
    explicit CColorDialog(COLORREF initial = 0, DWORD flags = 0, CWnd* parent = nullptr)
        : colour_(initial), parent_(parent) {
        (void)flags;
    }
    int DoModal();  // IDOK or IDCANCEL
    COLORREF GetColor() const { return colour_; }

  private:
    COLORREF colour_;
    CWnd* parent_;
};
