#pragma once
// List boxes; with LBS_CHECKBOXES every item has a check box.

#include "platform/windows/Wnd.h"

class CListBox : public CWnd {
  public:
    int AddString(const CString& text);  // answers its index
    void DeleteString(int index);
    void ResetContent();
    int GetCount() const;
    CString GetText(int index) const;
    int GetCurSel() const;  // -1: none
    void SetCurSel(int index);
    // Multiple selection.
    bool GetSel(int index) const;
    void SetSel(int index, bool selected = true);

  protected:
    kvx::WindowKind Kind(DWORD style) const override;
};

class CCheckListBox : public CListBox {
  public:
    void SetCheck(int index, int check);
    int GetCheck(int index) const;
};
