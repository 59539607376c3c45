#pragma once
// A control of the system that also takes posted messages, and hands the keys that it has no use
// for to the window around it.

#include "platform/win32/OwnWindow.h"

namespace kvx::win32 {

class NativeControl : public OwnWindow {
  public:
    using OwnWindow::OwnWindow;

    // Every message of the window comes to the object first.
    static void TakeOver(win::HWND window, const std::shared_ptr<NativeControl>& control);

  protected:
    win::LRESULT OnSystemMessage(UINT message, win::WPARAM wParam, win::LPARAM lParam) override;
    // What the system's control does with the message.
    win::LRESULT Default(UINT message, win::WPARAM wParam, win::LPARAM lParam) const;

  private:
    bool LeavesKey(win::WPARAM key) const;
    std::optional<win::LRESULT> OnKey(win::WPARAM key, win::LPARAM flags);
    bool MoveInGroup(bool back) const;

    win::WNDPROC procedure_ = nullptr;
};

}  // namespace kvx::win32
