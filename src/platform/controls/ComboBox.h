#pragma once
// Combo boxes: an edit field with a list, or a choice only (CBS_DROPDOWNLIST).

#include "platform/windows/Wnd.h"

class CComboBox : public CWnd {
  public:
    int AddString(const CString& text);  // answers its index
    void ResetContent();
    int GetCount() const;
    int GetCurSel() const;  // -1: none
    void SetCurSel(int index);
    CString GetLBText(int index) const;
    int FindStringExact(const CString& text) const;  // -1: none

  protected:
    kvx::WindowKind Kind(DWORD style) const override;
};
