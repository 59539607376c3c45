#pragma once
// Operations of the system's controls. Changes made here raise no notifications.

#include "platform/win32/System.h"

namespace kvx::win32 {

class Win32Controls final : public IControls {
  public:
    void SetCheck(HWND button, bool checked) override;
    bool Check(HWND button) const override;
    void SetDefault(HWND button, bool isDefault) override;
    void Click(HWND button) override;
    void SetTextLimit(HWND edit, int characters) override;
    void SetSelection(HWND edit, int start, int end) override;
    void Selection(HWND edit, int& start, int& end) const override;
    void SetReadOnly(HWND edit, bool readOnly) override;
    int AddItem(HWND list, const CString& text) override;
    void RemoveItem(HWND list, int index) override;
    void ClearItems(HWND list) override;
    int ItemCount(HWND list) const override;
    CString ItemText(HWND list, int index) const override;
    int CurrentItem(HWND list) const override;
    void SetCurrentItem(HWND list, int index) override;
    bool ItemSelected(HWND list, int index) const override;
    void SelectItem(HWND list, int index, bool selected) override;
    bool ItemChecked(HWND list, int index) const override;
    void CheckItem(HWND list, int index, bool checked) override;
    void SetProgress(HWND bar, int lower, int upper, int position) override;
};

}  // namespace kvx::win32
