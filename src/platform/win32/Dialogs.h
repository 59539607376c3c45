#pragma once
// Standard dialogs and popup menus of the system, and its modal loop.

#include "platform/win32/System.h"

namespace kvx::win32 {

class Win32Dialogs final : public IDialogs {
  public:
    int MessageBox(const MessageBoxRequest& request) override;
    CString File(const FileDialogRequest& request) override;
    std::optional<COLORREF> Colour(COLORREF initial, HWND owner) override;
    UINT PopupMenu(const CMenu& menu, POINT screen) override;
    bool ReadMenuBar(HWND window, CMenu& menu) override;
    void RunModal(HWND window) override;
    void EndModal(HWND window) override;
};

}  // namespace kvx::win32
