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
    // Of the field inside a combo box, which has the keyboard in its place.
    static win::LRESULT CALLBACK FieldProcedure(win::HWND field, UINT message, win::WPARAM wParam,
                                                win::LPARAM lParam);
    bool LeavesKey(win::WPARAM key) const;
    // None: the system's control is to have the key.
    std::optional<win::LRESULT> OnKeyboard(UINT message, win::WPARAM wParam, win::LPARAM lParam);
    std::optional<win::LRESULT> OnKey(win::WPARAM key, win::LPARAM flags);
    bool MoveInGroup(bool back) const;

    win::WNDPROC procedure_ = nullptr;
};

}  // namespace kvx::win32
