#pragma once
// Push buttons, check boxes, radio buttons, group boxes.

#include "platform/Wnd.h"

inline constexpr int BST_UNCHECKED = 0;
inline constexpr int BST_CHECKED = 1;

class CButton : public CWnd {
  public:
    using CWnd::Create;
    bool Create(const CString& text, DWORD style, const RECT& rect, CWnd* parent, UINT id);
    void SetCheck(int check);
    int GetCheck() const;

  protected:
    kvx::WindowKind Kind(DWORD style) const override;
};
