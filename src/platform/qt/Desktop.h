#pragma once
// Screen, palette, mouse and keyboard state of the toolkit.

#include "platform/Backend.h"

namespace kvx::qt {

class Desktop final : public IDesktop {
  public:
    std::optional<COLORREF> SysColor(int index) const override;
    SIZE ScreenSize() const override;
    RECT WorkArea(POINT screen) const override;
    POINT CursorPosition() const override;
    void ShowCursor(HCURSOR cursor) override;
    bool IsKeyDown(UINT key) const override;
    void Beep(UINT kind) override;

    // Keys that this module's windows saw going down and not yet up.
    static void NoteKey(UINT key, bool down);
    static void ForgetKeys();
};

}  // namespace kvx::qt
