#pragma once
// Edit fields: single line, or several with ES_MULTILINE.

#include "platform/windows/Wnd.h"

class CEdit : public CWnd {
  public:
    // 0: no limit. Counts characters.
    void SetLimitText(int characters);
    // Selects characters; (0, -1) is the whole text. Scrolls the caret into view.
    void SetSel(int start, int end);
    void GetSel(int& start, int& end) const;
    void SetReadOnly(bool readOnly = true);

  protected:
    kvx::WindowKind Kind(DWORD style) const override;
};
