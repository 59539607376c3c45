#pragma once
// A list box of the system whose items have check boxes, which the system's own has not.

#include "platform/win32/NativeControl.h"

namespace kvx::win32 {

class CheckList final : public NativeControl {
  public:
    using NativeControl::NativeControl;

    static std::shared_ptr<CheckList> Of(win::HWND window);
    bool IsChecked(int index) const;
    void Check(int index, bool checked);
    // Paints one item, as the parent is asked to.
    void Draw(const win::DRAWITEMSTRUCT& item) const;

  protected:
    win::LRESULT OnSystemMessage(UINT message, win::WPARAM wParam, win::LPARAM lParam) override;

  private:
    void Toggle(int index);
    // Items are as high as the font asks.
    void FitItems(win::HFONT font) const;
    int BoxAt(win::LPARAM point) const;  // item whose box is there; -1: none
};

}  // namespace kvx::win32
