#pragma once
// Push buttons, check boxes and radio buttons of the toolkit; group boxes, painted here.

#include "platform/windows/Wnd.h"

inline constexpr int BST_UNCHECKED = 0;
inline constexpr int BST_CHECKED = 1;

class CButton : public CWnd {
  public:
    using CWnd::Create;
    bool Create(const CString& text, DWORD style, const RECT& rect, CWnd* parent, UINT id);
    void SetCheck(int check);
    int GetCheck() const;

  protected:
    const MessageMap& GetMessageMap() const override;
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    int BackgroundColour() const override;
    kvx::WindowKind Kind(DWORD style) const override;
    bool TakesMouse(DWORD style) const override { return (style & BS_TYPEMASK) != BS_GROUPBOX; }
    void OnPaint();  // group boxes; the toolkit paints the others
};
