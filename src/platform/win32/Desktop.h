#pragma once
// Screen, colours, mouse and keyboard state of the system.

#include "platform/win32/System.h"

namespace kvx::win32 {

class Desktop final : public IDesktop {
  public:
    explicit Desktop(Screen screen) : screen_(screen) {}

    std::optional<COLORREF> SysColor(int index) const override;
    SIZE ScreenSize() const override;
    RECT WorkArea(POINT screen) const override;
    POINT CursorPosition() const override;
    void ShowCursor(HCURSOR cursor) override;
    bool IsKeyDown(UINT key) const override;
    void Beep(UINT kind) override;

  private:
    Screen screen_;
};

}  // namespace kvx::win32
