#pragma once
// Standard dialogs and popup menus of the toolkit, and its modal loop.

#include "platform/Backend.h"

namespace kvx::qt {

class QtDialogs final : public IDialogs {
  public:
    int MessageBox(const MessageBoxRequest& request) override;
    CString File(const FileDialogRequest& request) override;
    std::optional<COLORREF> Colour(COLORREF initial, HWND owner) override;
    UINT PopupMenu(const CMenu& menu, POINT screen) override;
    bool ReadMenuBar(HWND window, CMenu& menu) override;
    void RunModal(HWND window) override;
    void EndModal(HWND window) override;
};

}  // namespace kvx::qt
